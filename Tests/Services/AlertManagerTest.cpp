#include "Services/AlertManager.h"
#include "Model/SettingsViewModel.h"
#include "Support/ScriptedDashboard.h"
#include "Support/ScriptedServices.h"
#include "Support/ScriptedStore.h"
#include "Support/TestMain.h"

#include <QtTest>

namespace {

/// One tick of the memory metric, whose limit is 80 %.
struct Step {
    int time = 0; // seconds
    std::optional<double> memory = {};
    bool alertOn = true;
};

using namespace Qt::StringLiterals;
using Known = NotificationAuthorization;
using Answer = AuthorizationAnswer;

/// All that the manager works on, with the alerts on.
struct Bench {
    explicit Bench(Known authorization = Known::Authorized)
    {
        for (const SystemMetric metric : allMetrics)
            settings.of(metric)->setIsAlertOn(true);
        centre.answerQueries(authorization);
    }

    void tick(int time, const Vitals &reported)
    {
        machine.report(reported);
        centre.posts.clear();
        manager->checkAlerts(settings, machine.dashboard(),
                             AlertManager::TimePoint(std::chrono::seconds(1'700'000'000 + time)));
        for (const NotificationRecord &record : centre.posts)
            times[record.identifier.section(u'.', -1)] << time;
    }

    ScriptedStore store;
    SettingsViewModel settings{store};
    ScriptedDashboard machine;
    ScriptedNotificationCentre centre;
    std::unique_ptr<AlertManager> manager = std::make_unique<AlertManager>(centre);
    QMap<QString, QList<int>> times; ///< of the posts, in seconds, by metric
};

} // namespace

class AlertManagerTest : public QObject {
    Q_OBJECT

private slots:
    void crossings()
    {
        using Steps = QList<Step>;
        using Alerts = QList<int>; // seconds
        for (const auto &[steps, alerts] :
             {std::pair(Steps{{0, 70}, {3, 80}, {6, 79.99}}, Alerts{3}), // exactly at the limit
              {{{0, 85}, {300, 90}, {700, 85}, {1400, 85}}, {0}}, // stays red
              {{{0, 70}, {3, 85}, {6, 90}, {300, 75}, {602, 85}}, {3}}, // just within the cooldown
              {{{0, 70}, {3, 85}, {6, 90}, {300, 75}, {603, 85}}, {3, 603}},
              // A crossing within the cooldown is consumed, and the cooldown runs from the alert.
              {{{0, 85}, {100, 75}, {200, 85}, {700, 85}, {797, 75}, {800, 85}}, {0, 800}},
              {{{0, 85}, {3, 75}, {500, 85}, {503, 75}, {601, 85}}, {0, 601}},
              // The clock is set back.
              {{{0, 85}, {3, 75}, {-9000, 85}, {-8000, 75}, {599, 85}}, {0, -9000, 599}},
              // No value for a while; the switch off for a while.
              {{{0, 85}, {3, 75}, {300, {}}, {700, 85}}, {0, 700}},
              {{{0, 85}, {300, 75, false}, {700, 85}}, {0}},
              {{{0, 85}, {300, 75}, {700, 85, false}, {703, 85}}, {0, 703}}}) {
            Bench bench;
            for (const Step &step : steps) {
                bench.settings.setAlertMemory(step.alertOn);
                bench.tick(step.time, {.memory = step.memory});
            }
            QCOMPARE(bench.times.value(u"Memory"_s), alerts);
        }
    }

    void eachMetricHasItsSwitchAndText()
    {
        const QString prefix = u"org.meterkin.Meterkin.alert."_s;
        const QString title = u"Meterkin Alert"_s;
        for (const auto &[metric, identifier, body] :
             {std::tuple(SystemMetric::FanSpeed, u"Fan Speed"_s, u"Fan speed is 4234 RPM"_s),
              {SystemMetric::MemoryUsage, u"Memory"_s, u"Memory usage is 92%"_s},
              {SystemMetric::CpuUsage, u"CPU Usage"_s, u"CPU usage is 80%"_s}}) {
            Bench bench;
            for (const SystemMetric each : allMetrics)
                bench.settings.of(each)->setIsAlertOn(each == metric);
            bench.tick(0, {.cpuUsage = 0.0}); // usage is a difference of two samples
            bench.tick(3, {4234.5, 91.6, 80.4});
            QCOMPARE(bench.centre.posts,
                     std::vector({NotificationRecord{prefix + identifier, title, body}}));
        }
    }

    void asksForPermission()
    {
        // What is known at first, the answer to each request; in three red ticks, the requests and
        // the times of the alerts.
        for (const auto &[known, answer, requests, alerts] :
             {std::tuple(Known::Authorized, std::optional<Answer>(), 0, QList<int>{0}),
              {Known::NotDetermined, Answer::Granted, 1, {3}},
              {Known::Denied, Answer::Granted, 1, {3}},
              {Known::NotDetermined, Answer::Failed, 3, {}},
              {Known::NotDetermined, {}, 3, {}}}) {
            Bench bench(known);
            for (const int time : {0, 3, 6}) {
                bench.tick(time, {.memory = 90.0});
                if (answer)
                    bench.centre.answerRequests(*answer);
            }
            QCOMPARE(bench.centre.requestCount, requests);
            QCOMPARE(bench.times.value(u"Memory"_s), alerts);
        }
        Bench bench(Known::NotDetermined);
        for (const SystemMetric metric : allMetrics)
            bench.settings.of(metric)->setIsAlertOn(false);
        bench.tick(0, {.memory = 90.0});
        QCOMPARE(bench.centre.requestCount, 0); // nothing to ask for
    }

    void lateAnswersFindNoManager()
    {
        ScriptedNotificationCentre silent;
        Bench bench;
        bench.manager->requestPermission();
        bench.centre.answerRequests(Answer::Failed);
        QVERIFY(!bench.manager->hasPermission()); // which it had before

        bench.manager->requestPermission();
        bench.manager = std::make_unique<AlertManager>(silent);
        AlertManager(bench.centre).requestPermission();
        bench.centre.answerQueries(Known::Authorized);
        bench.centre.answerRequests(Answer::Granted);
        bench.tick(0, {.memory = 90.0});
        QVERIFY(!bench.manager->hasPermission() && bench.times.isEmpty());
    }
};

METERKIN_TEST(AlertManagerTest);
#include "AlertManagerTest.moc"
