#include "Platform/macOS/UserDefaultsStore.h"
#include "Platform/macOS/FoundationValues.h"
#include "Support/TestMain.h"

#include <QtTest>

#include <limits>

namespace {

NSString *domain()
{
    return NSProcessInfo.processInfo.processName;
}

/// What was set, apart from the registered defaults.
QVariantMap storedValues()
{
    return valueOf([NSUserDefaults.standardUserDefaults persistentDomainForName:domain()]).toMap();
}

} // namespace

class UserDefaultsStoreTest : public QObject {
    Q_OBJECT

private slots:
    void init() { [NSUserDefaults.standardUserDefaults removePersistentDomainForName:domain()]; }

    void keepsValues()
    {
        const QString key = QStringLiteral("key");
        UserDefaultsStore store;
        QVERIFY(!store.text(key));
        store.setText(key, QStringLiteral("⌘ Größe"));
        QCOMPARE(store.text(key).value_or(QString()), QStringLiteral("⌘ Größe"));
        store.setText(key, QString());
        QCOMPARE(store.text(key), std::optional(QString()));
        store.setNumber(key, 0.1);
        QCOMPARE(store.number(key), 0.1);
        for (const bool value : {true, false}) {
            store.setBoolean(key, value);
            QCOMPARE(store.boolean(key), value);
            QCOMPARE(storedValues().value(key).typeId(), QMetaType::Bool);
        }
        for (const qint64 value : {std::numeric_limits<qint64>::min(), qint64(4'294'967'295)}) {
            store.setInteger(key, value);
            QCOMPARE(store.integer(key), value);
        }
    }

    void defaultsAddUpAndAreNotStored()
    {
        const QString a = QStringLiteral("registeredA");
        const QString b = QStringLiteral("registeredB");
        UserDefaultsStore store;
        store.registerDefaults({{a, 1.5}, {b, true}});
        store.registerDefaults({{a, QStringLiteral("text")}, {b, QVariant()}});
        QCOMPARE(store.text(a).value_or(QString()), QStringLiteral("text"));
        QVERIFY(store.boolean(b));
        QCOMPARE(storedValues(), QVariantMap());
        store.setBoolean(b, false);
        QVERIFY(!store.boolean(b));
        QCOMPARE(storedValues().keys(), QStringList{b});
    }
};

METERKIN_TEST(UserDefaultsStoreTest);
#include "UserDefaultsStoreTest.moc"
