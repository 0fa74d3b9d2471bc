#include "Model/SettingsViewModel.h"
#include "Support/ScriptedStore.h"
#include "Support/TestMain.h"

#include <QMetaProperty>
#include <QSignalSpy>
#include <QtTest>

#include <cmath>
#include <limits>

/// Loading and storing of the settings.
class SettingsViewModelTest : public QObject {
    Q_OBJECT

private slots:
    void registersThirteenDefaults()
    {
        const QVariantMap expected{
            {QStringLiteral("menuBarMetric"), QStringLiteral("Memory")},
            {QStringLiteral("updateInterval"), 3.0},
            {QStringLiteral("fanSpeedGreen"), 2000.0},
            {QStringLiteral("fanSpeedYellow"), 4000.0},
            {QStringLiteral("memoryGreen"), 60.0},
            {QStringLiteral("memoryYellow"), 80.0},
            {QStringLiteral("cpuUsageGreen"), 50.0},
            {QStringLiteral("cpuUsageYellow"), 80.0},
            {QStringLiteral("launchAtLogin"), true},
            {QStringLiteral("alertFanSpeed"), false},
            {QStringLiteral("alertMemory"), false},
            {QStringLiteral("alertCPUUsage"), false},
            {QStringLiteral("onboardingShown"), false},
        };
        ScriptedStore store;
        const SettingsViewModel settings(store);
        QCOMPARE(store.defaults, expected);
        QVERIFY(store.writes.isEmpty());
    }

    void loadsAFreshUser()
    {
        ScriptedStore store;
        const SettingsViewModel settings(store);
        QCOMPARE(settings.menuBarMetric(), SystemMetric::memoryUsage);
        QCOMPARE(settings.updateInterval(), 3.0);
        QVERIFY(settings.thresholds(SystemMetric::fanSpeed) == (Thresholds{2000.0, 4000.0}));
        QVERIFY(settings.thresholds(SystemMetric::memoryUsage) == (Thresholds{60.0, 80.0}));
        QVERIFY(settings.thresholds(SystemMetric::cpuUsage) == (Thresholds{50.0, 80.0}));
        QVERIFY(!settings.alertFanSpeed() && !settings.alertMemory() && !settings.alertCPUUsage());
        QVERIFY(settings.launchAtLogin());
        QVERIFY(!settings.hotkeyEnabled());
        QCOMPARE(settings.hotkeyKeyCode(), 0U);
        QCOMPARE(settings.hotkeyModifiers(), 0U);
    }

    void loadsTheMetric_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<SystemMetric>("metric");
        QTest::newRow("fan") << QStringLiteral("Fan Speed") << SystemMetric::fanSpeed;
        QTest::newRow("cpu") << QStringLiteral("CPU Usage") << SystemMetric::cpuUsage;
        QTest::newRow("memory") << QStringLiteral("Memory") << SystemMetric::memoryUsage;
        QTest::newRow("letter case") << QStringLiteral("cpu usage") << SystemMetric::memoryUsage;
        QTest::newRow("empty") << QStringLiteral("") << SystemMetric::memoryUsage;
    }
    void loadsTheMetric()
    {
        QFETCH(QString, stored);
        ScriptedStore store;
        store.stored.insert(QStringLiteral("menuBarMetric"), stored);
        QTEST(SettingsViewModel(store).menuBarMetric(), "metric");
    }

    // Each through the meta-object, as views come in: key, type and signal of every row of the
    // table must belong together.
    void stores_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QVariant>("written");
        QTest::newRow("menuBarMetric")
            << QVariant::fromValue(SystemMetric::cpuUsage) << QVariant(QStringLiteral("CPU Usage"));
        const auto same = [](const char *name, const QVariant &value) {
            QTest::newRow(name) << value << value;
        };
        same("updateInterval", 0.5);
        same("fanSpeedGreen", 1.5);
        same("fanSpeedYellow", 1e300);
        same("memoryGreen", 90.0); // above its yellow threshold
        same("memoryYellow", -1.0);
        same("cpuUsageGreen", 0.0);
        same("cpuUsageYellow", 12.25);
        same("alertFanSpeed", true);
        same("alertMemory", true);
        same("alertCPUUsage", true);
        same("launchAtLogin", false);
        same("hotkeyEnabled", true);
        QTest::newRow("hotkeyKeyCode") << QVariant(49U) << QVariant(qint64{49});
        QTest::newRow("hotkeyModifiers") << QVariant(0xFFFFFFFFU) << QVariant(qint64{0xFFFFFFFF});
    }
    void stores()
    {
        QFETCH(QVariant, value);
        QFETCH(QVariant, written);
        const char *name = QTest::currentDataTag();
        const QList<ScriptedStore::Write> oneWrite{{QString::fromLatin1(name), written}};

        ScriptedStore store;
        SettingsViewModel settings(store);
        const QMetaObject *meta = settings.metaObject();
        const QMetaProperty property = meta->property(meta->indexOfProperty(name));
        QVERIFY(property.isBindable() && property.bindable(&settings).isReadOnly());
        QSignalSpy notified(&settings, property.notifySignal());

        QVERIFY(property.write(&settings, value));
        QCOMPARE(property.read(&settings), value);
        QCOMPARE(notified.count(), 1);
        QVERIFY(store.writes == oneWrite);
        QCOMPARE(store.writes.first().value.metaType(), written.metaType());

        QVERIFY(property.write(&settings, value));
        QCOMPARE(notified.count(), 1);
        QVERIFY(store.writes == oneWrite + oneWrite);

        SettingsViewModel reloaded(store);
        QCOMPARE(property.read(&reloaded), value);
    }

    void hasNoOtherSettings()
    {
        const QMetaObject &meta = SettingsViewModel::staticMetaObject;
        QCOMPARE(meta.propertyCount() - meta.propertyOffset(), 15);
    }

    void findsThresholds()
    {
        ScriptedStore store;
        SettingsViewModel settings(store);
        settings.setFanSpeedGreen(1.0);
        settings.setFanSpeedYellow(2.0);
        settings.setMemoryGreen(3.0);
        settings.setMemoryYellow(4.0);
        settings.setCpuUsageGreen(5.0);
        settings.setCpuUsageYellow(6.0);
        QVERIFY(settings.thresholds(SystemMetric::fanSpeed) == (Thresholds{1.0, 2.0}));
        QVERIFY(settings.thresholds(SystemMetric::memoryUsage) == (Thresholds{3.0, 4.0}));
        QVERIFY(settings.thresholds(SystemMetric::cpuUsage) == (Thresholds{5.0, 6.0}));
    }

    void notANumberNotifiesOnce()
    {
        ScriptedStore store;
        SettingsViewModel settings(store);
        QSignalSpy notified(&settings, &SettingsViewModel::updateIntervalChanged);
        settings.setUpdateInterval(std::numeric_limits<double>::quiet_NaN());
        settings.setUpdateInterval(std::numeric_limits<double>::quiet_NaN());
        QVERIFY(std::isnan(settings.updateInterval()));
        QCOMPARE(notified.count(), 1);
        QCOMPARE(store.writes.size(), 2);
    }

    void aSetterWithinANotificationWins()
    {
        ScriptedStore store;
        SettingsViewModel settings(store);
        connect(&settings, &SettingsViewModel::memoryGreenChanged, &settings, [&settings] {
            if (settings.memoryGreen() > 50.0)
                settings.setMemoryGreen(50.0);
        });
        settings.setMemoryGreen(70.0);
        QCOMPARE(settings.memoryGreen(), 50.0);
        QCOMPARE(store.number(QStringLiteral("memoryGreen")), 50.0);
    }
};

METERKIN_TEST(SettingsViewModelTest);
#include "SettingsViewModelTest.moc"
