#include "Services/AlertManager.h"
#include "Model/SettingsViewModel.h"
#include "Services/ScriptedDashboard.h"
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

/// A post, as "seconds: last word of the identifier".
QString posted(int time, const QString &metric)
{
    return QStringLiteral("%1: %2").arg(time).arg(metric);
}

const QString fan = QStringLiteral("Fan Speed");
const QString memory = QStringLiteral("Memory");
const QString cpu = QStringLiteral("CPU Usage");

/// All that the manager works on, with the alerts on.
struct Bench {
    explicit Bench(NotificationAuthorization authorization = NotificationAuthorization::Authorized)
    {
        settings.setAlertFanSpeed(true);
        settings.setAlertMemory(true);
        settings.setAlertCPUUsage(true);
        centre.answerQueries(authorization);
    }

    void tick(int time, const Vitals &reported)
    {
        now = std::chrono::system_clock::time_point(std::chrono::seconds(1'700'000'000 + time));
        machine.report(reported);
        centre.posts.clear();
        manager->checkAlerts(settings, machine.dashboard());
        for (const NotificationRecord &record : centre.posts)
            log << posted(time, record.identifier.section(u'.', -1));
    }

    ScriptedStore store;
    SettingsViewModel settings{store};
    ScriptedDashboard machine;
    ScriptedNotificationCentre centre;
    std::chrono::system_clock::time_point now;
    std::unique_ptr<AlertManager> manager =
        std::make_unique<AlertManager>(&centre, [this] { return now; });
    QStringList log;
};

} // namespace

Q_DECLARE_METATYPE(Step)

class AlertManagerTest : public QObject {
    Q_OBJECT

private slots:
    void crossings_data();
    void crossings();
    void eachMetricHasItsSwitch_data();
    void eachMetricHasItsSwitch();
    void metricsCoolDownOnTheirOwn();
    void hourOfFlapping();
    void permission_data();
    void permission();
    void failedRequestTakesPermissionBack();
    void lateAnswersFindNoManager();
    void withoutCentreNothingHappens();
    void notificationText_data();
    void notificationText();
};

void AlertManagerTest::crossings_data()
{
    QTest::addColumn<QList<Step>>("steps");
    QTest::addColumn<QList<int>>("alerts"); // seconds

    const auto row = [](const char *name, const QList<Step> &steps, const QList<int> &alerts) {
        QTest::newRow(name) << steps << alerts;
    };
    row("never red", {{0, 70}, {3, 79.99}, {6, 0}}, {});
    row("red from the start", {{0, 85}, {3, 90}}, {0});
    row("exactly at the limit", {{0, 70}, {3, 80}, {6, 79.99}}, {3});
    row("stays red", {{0, 85}, {300, 90}, {700, 85}, {1400, 85}}, {0});
    row("back within the cooldown", {{0, 70}, {3, 85}, {6, 90}, {9, 75}, {12, 85}}, {3});
    row("just within", {{0, 85}, {300, 75}, {599, 85}}, {0});
    row("just after", {{0, 85}, {300, 75}, {600, 85}}, {0, 600});
    row("consumed crossing", {{0, 85}, {100, 75}, {200, 85}, {700, 85}, {797, 75}, {800, 85}},
        {0, 800});
    row("cooldown runs from the alert", {{0, 85}, {3, 75}, {500, 85}, {503, 75}, {601, 85}},
        {0, 601});
    row("clock set back", {{1000, 85}, {1003, 75}, {0, 85}}, {1000});
    row("first value late", {{0, {}}, {3, {}}, {6, 85}}, {6});
    row("gap while red", {{0, 85}, {300, {}}, {700, 85}}, {0});
    row("gap while below", {{0, 85}, {3, 75}, {300, {}}, {700, 85}}, {0, 700});
    row("switched on while red", {{0, 85, false}, {3, 85}}, {3});
    row("off while below", {{0, 75}, {3, 85, false}, {6, 75, false}, {9, 85}}, {9});
    row("off during the drop", {{0, 85}, {300, 75, false}, {700, 85}}, {0});
    row("off during the rise", {{0, 85}, {300, 75}, {700, 85, false}, {703, 85}}, {0, 703});
    row("switched on in the cooldown", {{0, 85}, {3, 75}, {6, 85, false}, {9, 85}, {700, 85}}, {0});
}

void AlertManagerTest::crossings()
{
    QFETCH(const QList<Step>, steps);
    QFETCH(const QList<int>, alerts);
    Bench bench;
    for (const Step &step : steps) {
        bench.settings.setAlertMemory(step.alertOn);
        bench.tick(step.time, {.memory = step.memory});
    }
    QStringList expected;
    for (const int time : alerts)
        expected << posted(time, memory);
    QCOMPARE(bench.log, expected);
}

void AlertManagerTest::eachMetricHasItsSwitch_data()
{
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QString>("metric");
    QTest::newRow("fan") << QByteArray("alertFanSpeed") << fan;
    QTest::newRow("memory") << QByteArray("alertMemory") << memory;
    QTest::newRow("cpu") << QByteArray("alertCPUUsage") << cpu;
}

void AlertManagerTest::eachMetricHasItsSwitch()
{
    QFETCH(const QByteArray, property);
    QFETCH(const QString, metric);
    Bench bench;
    bench.settings.setAlertFanSpeed(false);
    bench.settings.setAlertMemory(false);
    bench.settings.setAlertCPUUsage(false);
    bench.settings.setProperty(property, true);
    bench.tick(0, {5000, 90, 90});
    QCOMPARE(bench.log, QStringList(posted(0, metric)));
}

void AlertManagerTest::metricsCoolDownOnTheirOwn()
{
    Bench bench;
    bench.settings.setCpuUsageYellow(50);
    const Vitals calm{3000, 60, 40};
    const Vitals red{5000, 90, 60}; // a processor usage that would be calm for memory
    bench.tick(0, {5000, 60, 40});
    bench.tick(3, {5000, 90, 40});
    bench.tick(6, {5000, 90, 60});
    bench.tick(300, calm);
    bench.tick(602, red);
    bench.tick(604, calm);
    bench.tick(606, red);
    bench.tick(1500, calm);
    bench.tick(1503, red);
    QCOMPARE(bench.log,
             QStringList({posted(0, fan), posted(3, memory), posted(6, cpu), posted(602, fan),
                          posted(606, memory), posted(606, cpu), posted(1503, fan),
                          posted(1503, memory), posted(1503, cpu)}));
}

void AlertManagerTest::hourOfFlapping()
{
    Bench bench;
    for (int tick = 0; tick <= 1200; ++tick)
        bench.tick(tick * 3,
                   {.fanSpeed = tick % 2 == 0 ? 4000.0 : 3999.0,
                    .memory = tick % 2 == 1 ? 80.0 : 79.0,
                    .cpuUsage = tick % 3 == 0 ? 99.0 : 1.0});

    const auto times = [&bench](const QString &metric) {
        QList<int> result;
        for (const QString &line : bench.log)
            if (line.endsWith(metric))
                result << line.section(u':', 0, 0).toInt();
        return result;
    };
    QCOMPARE(times(fan), QList<int>({0, 600, 1200, 1800, 2400, 3000, 3600}));
    QCOMPARE(times(memory), QList<int>({3, 603, 1203, 1803, 2403, 3003}));
    QCOMPARE(times(cpu), QList<int>({0, 603, 1206, 1809, 2412, 3015}));
    QCOMPARE(bench.log.size(), 19);
}

void AlertManagerTest::permission_data()
{
    QTest::addColumn<NotificationAuthorization>("known");
    QTest::addColumn<std::optional<AuthorizationAnswer>>("answer"); // to each request
    QTest::addColumn<bool>("alertsOn");
    QTest::addColumn<int>("requests"); // in three red ticks
    QTest::addColumn<QStringList>("alerts");
    QTest::addColumn<bool>("permitted");

    using Known = NotificationAuthorization;
    using Answer = AuthorizationAnswer;
    const auto row = [](const char *name, Known known, std::optional<Answer> answer, bool alertsOn,
                        int requests, const QStringList &alerts, bool permitted) {
        QTest::newRow(name) << known << answer << alertsOn << requests << alerts << permitted;
    };
    const QStringList atOnce{posted(0, memory)};
    const QStringList afterAnswer{posted(3, memory)};
    row("held", Known::Authorized, {}, true, 0, atOnce, true);
    row("held, alerts off", Known::Authorized, {}, false, 0, {}, true);
    row("granted", Known::NotDetermined, Answer::Granted, true, 1, afterAnswer, true);
    row("granted after all", Known::Denied, Answer::Granted, true, 1, afterAnswer, true);
    row("on trial, granted", Known::Provisional, Answer::Granted, true, 1, afterAnswer, true);
    row("refused", Known::NotDetermined, Answer::Refused, true, 3, {}, false);
    row("error", Known::NotDetermined, Answer::Failed, true, 3, {}, false);
    row("no answer", Known::NotDetermined, {}, true, 3, {}, false);
    row("nothing to ask for", Known::NotDetermined, Answer::Granted, false, 0, {}, false);
}

void AlertManagerTest::permission()
{
    QFETCH(const std::optional<AuthorizationAnswer>, answer);
    QFETCH(const NotificationAuthorization, known);
    QFETCH(const bool, alertsOn);
    Bench bench(known);
    bench.settings.setAlertFanSpeed(false);
    bench.settings.setAlertMemory(alertsOn);
    bench.settings.setAlertCPUUsage(false);
    for (const int time : {0, 3, 6}) {
        bench.tick(time, {.memory = 90.0});
        if (answer)
            bench.centre.answerRequests(*answer);
    }
    QTEST(bench.centre.requestCount, "requests");
    QTEST(bench.log, "alerts");
    QTEST(bench.manager->hasPermission(), "permitted");
}

void AlertManagerTest::failedRequestTakesPermissionBack()
{
    Bench bench;
    QVERIFY(bench.manager->hasPermission());
    bench.manager->requestPermission();
    bench.centre.answerRequests(AuthorizationAnswer::Failed);
    bench.tick(0, {.memory = 90.0});
    QCOMPARE(bench.log, QStringList());
    bench.centre.answerRequests(AuthorizationAnswer::Granted);
    bench.tick(3, {.memory = 90.0});
    QCOMPARE(bench.log, QStringList(posted(3, memory)));
}

void AlertManagerTest::lateAnswersFindNoManager()
{
    ScriptedNotificationCentre centre;
    {
        AlertManager manager(&centre, [] { return std::chrono::system_clock::time_point(); });
        manager.requestPermission();
        QCOMPARE(centre.queries.size() + centre.requests.size(), std::size_t(2));
    }
    centre.answerQueries(NotificationAuthorization::Authorized);
    centre.answerRequests(AuthorizationAnswer::Granted);
}

void AlertManagerTest::withoutCentreNothingHappens()
{
    Bench bench;
    bench.manager =
        std::make_unique<AlertManager>(nullptr, [] { return WallClock::result_type(); });
    bench.tick(0, {.memory = 90.0});
    bench.manager->postAlert(SystemMetric::memoryUsage, 90.0);
    QVERIFY(!bench.manager->hasPermission());
}

void AlertManagerTest::notificationText_data()
{
    QTest::addColumn<SystemMetric>("metric");
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("identifier");
    QTest::addColumn<QString>("body");

    const QString prefix = QStringLiteral("org.meterkin.Meterkin.alert.");
    QTest::newRow("fan") << SystemMetric::fanSpeed << 1234.6 << prefix + fan
                         << QStringLiteral("Fan speed is 1235 RPM");
    QTest::newRow("memory") << SystemMetric::memoryUsage << 91.6 << prefix + memory
                            << QStringLiteral("Memory usage is 92%");
    QTest::newRow("cpu") << SystemMetric::cpuUsage << 80.4 << prefix + cpu
                         << QStringLiteral("CPU usage is 80%");
}

void AlertManagerTest::notificationText()
{
    QFETCH(const SystemMetric, metric);
    QFETCH(const double, value);
    QFETCH(const QString, identifier);
    QFETCH(const QString, body);
    Bench bench;
    bench.manager->postAlert(metric, value);
    QCOMPARE(bench.centre.posts,
             std::vector({NotificationRecord{identifier, QStringLiteral("Meterkin Alert"), body}}));
}

METERKIN_TEST(AlertManagerTest);
#include "AlertManagerTest.moc"
