#include "Platform/Linux/Updates/UpdateFramework.h"

#include "Platform/Linux/Updates/ScriptedPackageKit.h"
#include "Shell/ScriptedPlatform.h"
#include "Support/PrivateBus.h"
#include "Support/TestMain.h"

#include <QGuiApplication>
#include <QtTest>

#include <optional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Phase = UpdateSession::Phase;
using Script = ScriptedPackageKit::Script;
using Ending = ScriptedPackageKit::Ending;

namespace {

const QString installed = u"meterkin;1.0;amd64;installed"_s;
const QString update = u"meterkin;1.1;amd64;shop"_s;
const QString listing = u"GetUpdates 2"_s;
const QString simulation = u"UpdatePackages 6 "_s + update;
const QString download = u"UpdatePackages 10 "_s + update;
const QString installation = u"UpdatePackages 2 "_s + update;

Script listed(uint info, const QString &id)
{
    return {{ScriptedPackageKit::package(info, id)}};
}

/// All that one framework works with.
struct Bench {
    PrivateBus daemon;
    std::optional<BusConnection> bus;
    ScriptedPlatform system;
    int restarts = 0;
    std::optional<ScriptedPackageKit> service;
    std::unique_ptr<LinuxUpdateFramework> framework;

    Bench()
    {
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", daemon.address().toUtf8());
        bus.emplace(BusConnection::Kind::System);
        service.emplace(daemon.connectClient());
        service->scripts[u"SearchFiles"_s] = listed(1, installed);
        service->scripts[u"GetUpdates"_s] = listed(5, update);
    }
    ~Bench() { qunsetenv("DBUS_SYSTEM_BUS_ADDRESS"); }

    void start(std::chrono::milliseconds firstCheck = 100h, bool downloads = false,
               std::chrono::milliseconds timeout = PackageKitTransaction::Timeout)
    {
        framework = std::make_unique<LinuxUpdateFramework>(
            LinuxUpdateFramework::Dependencies{*bus, system.store, system.style, system.appearance,
                                               system.centre, u"1.0"_s, u"/opt/meterkin"_s,
                                               [this] { ++restarts; }},
            LinuxUpdateFramework::Times{timeout, firstCheck});
        framework->start();
        framework->setAutomaticallyDownloadsUpdates(downloads);
    }
    bool waitFor(const QString &call)
    {
        return QTest::qWaitFor([&] { return service->calls.contains(call); });
    }
    bool waitFor(Phase phase)
    {
        return QTest::qWaitFor([&] { return session().phase() == phase; }, 30'000);
    }
    bool check()
    {
        const bool canCheck = QTest::qWaitFor([&] { return framework->canCheckForUpdates(); });
        framework->checkForUpdates();
        return canCheck && framework->session() != nullptr;
    }
    UpdateSession &session() const { return *framework->session(); }
};

} // namespace

class LinuxUpdateFrameworkTest : public QObject {
    Q_OBJECT

private slots:
    void followsTheService()
    {
        Bench bench;
        bench.service->vanish();
        bench.start();
        QTRY_VERIFY(bench.bus->connection());
        QVERIFY(bench.framework->unavailableReason().contains(u"PackageKit"));
        bench.framework->checkForUpdates();
        QVERIFY(bench.framework->session() == nullptr);
        bench.service->appear();
        QTRY_VERIFY(bench.framework->canCheckForUpdates());
        QCOMPARE(bench.framework->unavailableReason(), QString());
        bench.daemon.stop();
        QTRY_VERIFY(!bench.framework->canCheckForUpdates());
    }

    void checks()
    {
        const QString list = u"GetUpdates"_s;
        const Script malformed{{ScriptedPackageKit::package(5, u";;;"_s),
                                ScriptedPackageKit::package(5, u"meterkin;1\x1b;amd64;shop"_s),
                                ScriptedPackageKit::package(5, update + QString(100'000, u'x')),
                                {u"Package"_s, {update}},
                                {u"ErrorCode"_s, {u"x"_s}},
                                {u"Finished"_s, {}}}};
        const Script offline = ScriptedPackageKit::error(2);
        const QString refresh = u"RefreshCache"_s;
        using Scripts = QHash<QString, Script>;
        for (const auto &[scripts, phase, text] :
             {std::tuple(Scripts(), Phase::Offered, u"1.1"),
              {{{list, {}}}, Phase::UpToDate, u""},
              {{{list, listed(5, u"meterkin-data;1.1;amd64;shop"_s)}}, Phase::UpToDate, u""},
              {{{list, listed(5, u"meterkin;1.1;arm64;shop"_s)}}, Phase::UpToDate, u""},
              {{{list, listed(9, update)}}, Phase::UpToDate, u""}, // held back
              {{{list, malformed}}, Phase::UpToDate, u""},
              {{{refresh, {{}, 1, Ending::Refuses}}}, Phase::Offered, u"1.1"},
              {{{refresh, offline}}, Phase::Offered, u"1.1"},
              {{{refresh, offline}, {list, {}}}, Phase::Failed, u"network"},
              {{{u"SearchFiles"_s, {}}}, Phase::Failed, u"not installed as a package"}}) {
            Bench bench;
            bench.service->scripts.insert(scripts);
            bench.start();
            QVERIFY(bench.check() && bench.waitFor(phase));
            QVERIFY((bench.session().offeredVersion() + bench.session().problem()).contains(text));
        }
    }

    void installsNothingButOurPackage()
    {
        Bench bench;
        const QStringList none;
        bench.service->scripts[u"GetUpdateDetail"_s] = {
            {{u"UpdateDetail"_s,
              {update, none, none, none, none, none, 0U, QString(100'000, u'x') + u'\x1b',
               QString(), 0U, QString(), QString()}}}};
        bench.service->scripts[simulation] = listed(12, u"libnew;1;amd64;shop"_s);
        bench.start();
        QVERIFY(bench.check());
        UpdateSession &session = bench.session();
        QTRY_VERIFY(!session.notes().isEmpty());
        QVERIFY(session.notes().size() < 5000);
        emit session.restartRequested();
        emit session.installRequested();
        emit session.installRequested();
        QVERIFY(bench.waitFor(Phase::Installed));
        QCOMPARE(bench.service->calls.filter(u"Packages"_s),
                 QStringList({simulation, download, installation}));
        for (const QString &call : std::as_const(bench.service->calls))
            QCOMPARE(bench.service->hints[call].contains(u"interactive=true"_s),
                     call == installation);
        QCOMPARE(bench.restarts, 0);
        emit session.restartRequested();
        QCOMPARE(bench.restarts, 1);
    }

    void stopsAtAFailure()
    {
        const QString longText = u"bad\n\tluck "_s + QString(1'000'000, u'x');
        for (const auto &[call, script, text] : // without a text the update is offered again
             {std::tuple(simulation, listed(13, u"desktop;1;amd64;x"_s), u"(desktop)"),
              {installation, Script{{}, 8}, u"signature"},
              {installation, ScriptedPackageKit::error(48), u"permission"},
              {installation, Script{{}, 1, Ending::Refuses}, u"permission"},
              {installation, ScriptedPackageKit::error(999, longText), u"says: bad luck x"},
              {installation, ScriptedPackageKit::error(17), u""},
              {download, Script{{}, 3}, u""},
              {installation, Script{{}, 1, Ending::Vanishes}, u"ended before"},
              {installation, Script{{}, 1, Ending::Hangs}, u"does not answer"}}) {
            const bool hangs = script.ending == Ending::Hangs;
            Bench bench;
            bench.service->scripts[call] = script;
            bench.service->answersProperties = !hangs;
            bench.start(100h, false, hangs ? 3000ms : PackageKitTransaction::Timeout);
            QVERIFY(bench.check() && bench.waitFor(Phase::Offered));
            emit bench.session().installRequested();
            QVERIFY(bench.waitFor(call));
            QVERIFY(bench.waitFor(QStringView(text).isEmpty() ? Phase::Offered : Phase::Failed));
            const QString problem = bench.session().problem();
            QVERIFY2(problem.contains(text) && problem.size() < 400, qPrintable(problem));
        }
    }

    void canBeCancelled()
    {
        Bench bench;
        bench.service->scripts[u"GetUpdates"_s].ending = Ending::Hangs;
        bench.start();
        QVERIFY(bench.check() && bench.waitFor(listing));
        QVERIFY(!bench.framework->canCheckForUpdates());
        emit bench.session().cancelRequested();
        QVERIFY(bench.framework->session() == nullptr);
        QVERIFY(bench.waitFor(u"Cancel"_s));

        bench.service->scripts[u"GetUpdates"_s].ending = Ending::Finishes;
        bench.service->scripts[download].ending = Ending::Hangs;
        QVERIFY(bench.check() && bench.waitFor(Phase::Offered));
        emit bench.session().installRequested();
        QVERIFY(bench.waitFor(download));
        bench.service->calls.clear();
        emit bench.session().cancelRequested();
        QCOMPARE(bench.session().phase(), Phase::Offered);
        QVERIFY(bench.waitFor(u"Cancel"_s) && !bench.service->calls.contains(installation));
        bench.service->vanish();
        emit bench.session().installRequested();
        QVERIFY(bench.waitFor(Phase::Failed));
    }

    void neverInstallsInTheBackground()
    {
        for (const bool downloads : {true, false}) {
            Bench bench;
            for (int day = 0; day < 2; ++day) { // no notification on the second
                bench.system.store.stored.remove(u"updateLastCheck"_s);
                bench.service->calls.clear();
                bench.start(0ms, downloads);
                QVERIFY(bench.waitFor(downloads ? download : listing));
                QTRY_VERIFY(bench.framework->canCheckForUpdates());
                QTRY_COMPARE(bench.system.centre.posts.size(), 1U);
            }
            QCOMPARE(bench.system.centre.posts[0].title, u"Meterkin 1.1 is available"_s);
            QCOMPARE(bench.service->calls.filter(u"Packages"_s),
                     downloads ? QStringList({simulation, download}) : QStringList());
            for (const QString &call : std::as_const(bench.service->calls))
                QVERIFY(bench.service->hints[call].contains(u"background=true"_s));
            emit bench.system.centre.clicked(u"org.meterkin.Meterkin.other"_s);
            QVERIFY(bench.framework->session() == nullptr);
            emit bench.system.centre.clicked(bench.system.centre.posts[0].identifier);
            QCOMPARE(bench.session().phase(), Phase::Offered);
            QCOMPARE(bench.session().isDownloaded(), downloads);

            bench.service->calls.clear();
            bench.start(0ms, downloads); // on the same day
            QTRY_VERIFY(bench.framework->canCheckForUpdates());
            QTest::qWait(1'100); // a very coarse timer may take until the next full second
            QCOMPARE(bench.service->calls, QStringList());
        }
    }

    void theUserComesFirst()
    {
        Bench bench;
        bench.service->scripts[u"GetUpdates"_s].ending = Ending::Hangs;
        bench.start(0ms);
        QVERIFY(bench.waitFor(listing));
        bench.service->scripts[u"GetUpdates"_s].ending = Ending::Finishes;
        bench.framework->checkForUpdates();
        QVERIFY(bench.waitFor(Phase::Offered));
        QVERIFY(bench.service->calls.contains(u"Cancel"_s));

        // An installation goes on without its window.
        bench.service->scripts[installation].ending = Ending::Hangs;
        emit bench.session().installRequested();
        QVERIFY(bench.waitFor(installation));
        for (QWindow *window : QGuiApplication::topLevelWindows())
            window->close();
        bench.service->finishLast();
        QTRY_COMPARE(bench.system.centre.posts.size(), 1U);
        QCOMPARE(bench.service->calls.last(), installation);
        QVERIFY(bench.system.centre.posts[0].title.contains(u"installed"));
        emit bench.system.centre.clicked(bench.system.centre.posts[0].identifier);
        QCOMPARE(bench.session().phase(), Phase::Installed);
    }
};

METERKIN_TEST(LinuxUpdateFrameworkTest);
#include "UpdateFrameworkTest.moc"
