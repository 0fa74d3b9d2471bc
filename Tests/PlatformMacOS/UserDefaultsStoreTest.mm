#include "Platform/macOS/UserDefaultsStore.h"
#include "Model/SettingsViewModel.h"
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
        QCOMPARE(store.number(key), 0.0);
        QCOMPARE(store.boolean(key), false);
        QCOMPARE(store.integer(key), 0);
        store.setText(key, QStringLiteral("⌘ Größe"));
        QCOMPARE(store.text(key).value_or(QString()), QStringLiteral("⌘ Größe"));
        QCOMPARE(store.number(key), 0.0);
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

    void carriesTheSettings()
    {
        UserDefaultsStore store;
        {
            SettingsViewModel settings(store);
            QCOMPARE(settings.menuBarMetric(), SystemMetric::memoryUsage);
            QCOMPARE(settings.updateInterval(), 3.0);
            QCOMPARE(settings.fanSpeedYellow(), 4000.0);
            QVERIFY(settings.launchAtLogin() && !settings.alertMemory());
            QCOMPARE(settings.hotkeyKeyCode(), 0U);
            QCOMPARE(storedValues(), QVariantMap());

            settings.setMenuBarMetric(SystemMetric::cpuUsage);
            settings.setUpdateInterval(3.0);
            settings.setLaunchAtLogin(false);
            settings.setHotkeyModifiers(std::numeric_limits<quint32>::max());
            QCOMPARE(storedValues().keys().join(u' '),
                     QStringLiteral("hotkeyModifiers launchAtLogin menuBarMetric updateInterval"));
        }
        {
            const SettingsViewModel settings(store);
            QCOMPARE(settings.menuBarMetric(), SystemMetric::cpuUsage);
            QVERIFY(!settings.launchAtLogin());
            QCOMPARE(settings.hotkeyModifiers(), std::numeric_limits<quint32>::max());
        }
        store.setText(QStringLiteral("menuBarMetric"), QStringLiteral("cpu usage"));
        QCOMPARE(SettingsViewModel(store).menuBarMetric(), SystemMetric::memoryUsage);
    }
};

METERKIN_TEST(UserDefaultsStoreTest);
#include "UserDefaultsStoreTest.moc"
