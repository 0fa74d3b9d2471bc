#include "Model/SettingsViewModel.h"
#include "Support/ScriptedStore.h"
#include "Support/TestMain.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QMetaProperty>
#include <QSignalSpy>
#include <QtTest>

using namespace Qt::StringLiterals;

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

        store.stored.insert(u"menuBarMetric"_s, u"cpu usage"_s); // none
        QCOMPARE(SettingsViewModel(store).menuBarMetric(), SystemMetric::MemoryUsage);
    }

    // Through the meta-object, as views do it: key, type and signal of a property must belong
    // together.
    void stores()
    {
        // The property is of the metric's settings where it has a colon.
        for (const auto &[key, property, value] :
             {std::tuple("fanSpeedGreen", QByteArray("0:green"), QVariant(1.5)),
              {"fanSpeedYellow", "0:yellow", 1e300},
              {"memoryGreen", "1:green", 90.5}, // above its yellow threshold
              {"memoryYellow", "1:yellow", -1.5},
              {"cpuUsageGreen", "2:green", 0.0},
              {"cpuUsageYellow", "2:yellow", 12.25},
              {"alertFanSpeed", "0:isAlertOn", true},
              {"alertMemory", "1:isAlertOn", true},
              {"alertCPUUsage", "2:isAlertOn", true},
              {"menuBarMetric", "menuBarMetric", QVariant::fromValue(SystemMetric::CpuUsage)},
              {"updateInterval", "updateInterval", 0.5},
              {"launchAtLogin", "launchAtLogin", false},
              {"hotkeyEnabled", "hotkeyEnabled", true},
              {"hotkeyKeyCode", "hotkeyKeyCode", 49U},
              {"hotkeyModifiers", "hotkeyModifiers", 0xFFFFFFFFU}}) {
            const QByteArray name = property.split(':').last();
            const auto holderIn = [&property = property, &name](SettingsViewModel &settings) {
                return property == name ? static_cast<QObject *>(&settings)
                                        : settings.of(static_cast<SystemMetric>(property[0] - '0'));
            };
            ScriptedStore store;
            SettingsViewModel settings(store);
            QObject *holder = holderIn(settings);
            const QMetaProperty meta =
                holder->metaObject()->property(holder->metaObject()->indexOfProperty(name));
            QVERIFY(meta.isBindable() && meta.bindable(holder).isReadOnly());
            QSignalSpy notified(holder, meta.notifySignal());
            const QVariant written = name == "menuBarMetric" ? u"CPU Usage"_s : value;
            for (int times = 1; times <= 2; ++times) { // the second is no change, but is written
                QVERIFY(meta.write(holder, value));
                QCOMPARE(meta.read(holder), value);
                QCOMPARE(notified.count(), 1);
                QVERIFY(std::exchange(store.writes, {})
                        == QList<ScriptedStore::Write>({{QString::fromLatin1(key), written}}));
            }
            SettingsViewModel reloaded(store);
            QCOMPARE(meta.read(holderIn(reloaded)), value);
        }
    }
};

METERKIN_TEST(SettingsViewModelTest);
#include "SettingsViewModelTest.moc"
