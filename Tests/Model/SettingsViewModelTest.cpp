#include "Model/SettingsViewModel.h"
#include "Support/ScriptedStore.h"
#include "Support/TestMain.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QMetaProperty>
#include <QSignalSpy>
#include <QtTest>

/// Loading and storing of the settings.
class SettingsViewModelTest : public QObject {
    Q_OBJECT

private slots:
    void registersDefaults()
    {
        const QByteArray expected =
            R"({"alertCPUUsage":false,"alertFanSpeed":false,"alertMemory":false,)"
            R"("cpuUsageGreen":50,"cpuUsageYellow":80,"fanSpeedGreen":2000,"fanSpeedYellow":4000,)"
            R"("launchAtLogin":true,"memoryGreen":60,"memoryYellow":80,"menuBarMetric":"Memory",)"
            R"("onboardingShown":false,"updateInterval":3})";
        ScriptedStore store;
        const SettingsViewModel settings(store);
        const auto registered = QJsonObject::fromVariantMap(store.defaults);
        QCOMPARE(QJsonDocument(registered).toJson(QJsonDocument::Compact), expected);
        QVERIFY(store.writes.isEmpty());
        QVERIFY(settings.launchAtLogin() && !settings.hotkeyEnabled());
        QVERIFY(settings.thresholds(SystemMetric::CpuUsage) == (Thresholds{50.0, 80.0}));

        store.stored.insert(QStringLiteral("menuBarMetric"), QStringLiteral("cpu usage")); // none
        QCOMPARE(SettingsViewModel(store).menuBarMetric(), SystemMetric::MemoryUsage);
    }

    // Through the meta-object, as views do it: key, type and signal of a property must belong
    // together.
    void stores_data()
    {
        QTest::addColumn<QByteArray>("property"); // of the metric's settings, where it has a colon
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QVariant>("written");
        QTest::newRow("menuBarMetric")
            << QByteArray("menuBarMetric") << QVariant::fromValue(SystemMetric::CpuUsage)
            << QVariant(QStringLiteral("CPU Usage"));
        const auto row = [](const char *key, const QByteArray &property, const QVariant &value) {
            QTest::newRow(key) << property << value << value;
        };
        row("fanSpeedGreen", "0:green", 1.5);
        row("fanSpeedYellow", "0:yellow", 1e300);
        row("memoryGreen", "1:green", 90.5); // above its yellow threshold
        row("memoryYellow", "1:yellow", -1.5);
        row("cpuUsageGreen", "2:green", 0.0);
        row("cpuUsageYellow", "2:yellow", 12.25);
        row("alertFanSpeed", "0:isAlertOn", true);
        row("alertMemory", "1:isAlertOn", true);
        row("alertCPUUsage", "2:isAlertOn", true);
        row("updateInterval", "updateInterval", 0.5);
        row("launchAtLogin", "launchAtLogin", false);
        row("hotkeyEnabled", "hotkeyEnabled", true);
        row("hotkeyKeyCode", "hotkeyKeyCode", 49U);
        row("hotkeyModifiers", "hotkeyModifiers", 0xFFFFFFFFU);
    }
    void stores()
    {
        QFETCH(QByteArray, property);
        QFETCH(QVariant, value);
        QFETCH(QVariant, written);
        const QByteArray name = property.split(':').last();
        const auto holderIn = [&](SettingsViewModel &settings) -> QObject * {
            return property == name ? static_cast<QObject *>(&settings)
                                    : settings.of(static_cast<SystemMetric>(property[0] - '0'));
        };
        const QList<ScriptedStore::Write> write{
            {QString::fromLatin1(QTest::currentDataTag()), written}};
        ScriptedStore store;
        SettingsViewModel settings(store);
        QObject *holder = holderIn(settings);
        const QMetaProperty meta =
            holder->metaObject()->property(holder->metaObject()->indexOfProperty(name));
        QVERIFY(meta.isBindable() && meta.bindable(holder).isReadOnly());
        QSignalSpy notified(holder, meta.notifySignal());
        for (int times = 1; times <= 2; ++times) { // the second is no change, but is written
            QVERIFY(meta.write(holder, value));
            QCOMPARE(meta.read(holder), value);
            QCOMPARE(notified.count(), 1);
            QVERIFY(std::exchange(store.writes, {}) == write);
        }
        SettingsViewModel reloaded(store);
        QCOMPARE(meta.read(holderIn(reloaded)), value);
    }

    void aSetterWithinANotificationWins()
    {
        ScriptedStore store;
        SettingsViewModel settings(store);
        connect(settings.of(SystemMetric::MemoryUsage), &MetricSettings::greenChanged, &settings,
                [&settings] { settings.setMemoryGreen(50.0); });
        settings.setMemoryGreen(70.0);
        QCOMPARE(settings.memoryGreen(), 50.0);
        QCOMPARE(store.number(QStringLiteral("memoryGreen")), 50.0);
    }
};

METERKIN_TEST(SettingsViewModelTest);
#include "SettingsViewModelTest.moc"
