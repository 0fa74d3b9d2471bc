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
        QVERIFY(settings.thresholds(SystemMetric::cpuUsage) == (Thresholds{50.0, 80.0}));
    }

    void unknownMetricIsMemory()
    {
        ScriptedStore store;
        store.stored.insert(QStringLiteral("menuBarMetric"), QStringLiteral("cpu usage"));
        QCOMPARE(SettingsViewModel(store).menuBarMetric(), SystemMetric::memoryUsage);
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
        same("memoryGreen", 90.5); // above its yellow threshold
        same("memoryYellow", -1.5);
        same("cpuUsageGreen", 0.0);
        same("cpuUsageYellow", 12.25);
        for (const char *name : {"alertFanSpeed", "alertMemory", "alertCPUUsage", "hotkeyEnabled"})
            same(name, true);
        same("launchAtLogin", false);
        same("hotkeyKeyCode", 49U);
        same("hotkeyModifiers", 0xFFFFFFFFU);
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

        QVERIFY(property.write(&settings, value));
        QCOMPARE(notified.count(), 1);
        QVERIFY(store.writes == oneWrite + oneWrite);

        SettingsViewModel reloaded(store);
        QCOMPARE(property.read(&reloaded), value);
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
