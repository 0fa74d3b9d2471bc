#include "Platform/macOS/Storage/DefaultsStore.h"
#include "Platform/macOS/FoundationValues.h"
#include "Support/TestMain.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

/// Foundation settles on the home folder at its first use, and wants a pool on the main thread.
void prepareFoundation()
{
    static const QTemporaryDir home;
    qputenv("HOME", home.path().toUtf8());
    static_cast<void>([[NSAutoreleasePool alloc] init]);
}
Q_COREAPP_STARTUP_FUNCTION(prepareFoundation)

/// What was set, apart from the registered defaults.
QVariantMap storedValues()
{
    NSString *domain = NSProcessInfo.processInfo.processName;
    return valueOf([NSUserDefaults.standardUserDefaults persistentDomainForName:domain]).toMap();
}

} // namespace

class DefaultsStoreTest : public QObject {
    Q_OBJECT

private slots:
    void keepsValues()
    {
        const QString key = QStringLiteral("key");
        const auto storedType = [&key] { return storedValues().value(key).typeId(); };
        MacDefaultsStore store;
        QVERIFY(!store.text(key));
        for (const QString &text : {QStringLiteral("⌘ Größe 𝔐\0."), QString()}) {
            store.setText(key, text);
            QCOMPARE(store.text(key), std::optional(text));
        }
        for (const bool value : {true, false}) {
            store.setBoolean(key, value);
            QCOMPARE(store.boolean(key), value);
            QCOMPARE(storedType(), QMetaType::Bool);
        }
    }

    void defaultsAddUpAndAreNotStored()
    {
        const QString key = QStringLiteral("registered");
        MacDefaultsStore store;
        store.registerDefaults({{key, 1.5}, {QStringLiteral("other"), true}});
        store.registerDefaults({{key, QStringLiteral("text")}, {QStringLiteral("other"), {}}});
        QCOMPARE(store.text(key).value_or(QString()), QStringLiteral("text"));
        QVERIFY(store.boolean(QStringLiteral("other")));
        QVERIFY(!storedValues().contains(key));
    }
};

METERKIN_TEST(DefaultsStoreTest);
#include "DefaultsStoreTest.moc"
