#include "Platform/Linux/Updates/UpdateFramework.h"

#include "Platform/Linux/Display/Server.h"
#include "Platform/Linux/Windows/Dialogs/UpdateDialog.h"
#include "Shell/ScriptedPlatform.h"
#include "Support/PrivateBus.h"
#include "Support/ScriptedService.h"
#include "Support/TestMain.h"

#include <QDBusObjectPath>
#include <QGuiApplication>
#include <QtTest>

#include <optional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Phase = UpdateSession::Phase;

namespace {

const QString packageKit = u"org.freedesktop.PackageKit"_s;
const QString update = u"meterkin;1.1;amd64;shop"_s;
const QString search = u"SearchFiles"_s;
const QString refresh = u"RefreshCache"_s;
const QString listing = u"GetUpdates"_s;
const QString simulation = u"UpdatePackages 6 "_s + update;
const QString download = u"UpdatePackages 10 "_s + update;
const QString installation = u"UpdatePackages 2 "_s + update;

enum class Ending { Finishes, Hangs, Vanishes, Refuses };

/// What a transaction sends.
struct Script {
    QList<std::pair<QString, QVariantList>> sent;
    uint exit = 1;
    Ending ending = Ending::Finishes;
};

Script listed(uint info, const QStringList &identifiers)
{
    Script script;
    for (const QString &each : identifiers)
        script.sent << std::pair(u"Package"_s, QVariantList{info, each, QString()});
    return script;
}
Script error(uint code, const QString &details = {})
{
    return {{{u"ErrorCode"_s, {code, details}}}, 2};
}

/// PackageKit, played by the test.
class ScriptedPackageKit : public ScriptedService {
public:
    using ScriptedService::ScriptedService;

    // By the call: the method, for UpdatePackages with its arguments.
    QHash<QString, Script> scripts{{search, listed(1, {u"meterkin;1.0;amd64;installed"_s})},
                                   {listing, listed(5, {update})}};
    QStringList calls;
    QHash<QString, QStringList> hints;

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &) override
    {
        const QString method = message.member();
        const QVariantList arguments = message.arguments();
        if (method == u"SetHints")
            m_hints = arguments[0].toStringList();
        if (method == u"SetHints" || method == u"GetAll") // a hanging transaction
            return true;
        if (method == u"CreateTransaction") {
            const QDBusObjectPath path(u'/' + QString::number(++m_transactions));
            return connection.send(message.createReply(QVariant::fromValue(path)));
        }
        QString call = method;
        if (method == u"UpdatePackages")
            call += u' ' + arguments[0].toString() + u' ' + arguments[1].toStringList().join(u',');
        calls << call;
        hints[call] = m_hints;
        m_path = message.path();
        const Script script = scripts.value(call);
        if (script.ending == Ending::Refuses)
            return connection.send(
                message.createErrorReply(packageKit + u".Transaction.RefusedByPolicy"_s, u"no"_s));
        connection.send(message.createReply());
        for (const auto &[name, sent] : script.sent)
            emitFromLast(name, sent);
        if (script.ending == Ending::Vanishes)
            connection.unregisterService(packageKit);
        else if (script.ending == Ending::Finishes && method != u"Cancel")
            emitFromLast(u"Finished"_s, {script.exit, 5U});
        return true;
    }
    void emitFromLast(const QString &name, const QVariantList &arguments) const
    {
        emitSignal(connection, m_path, packageKit + u".Transaction"_s, name, arguments);
    }

private:
    int m_transactions = 0;
    QStringList m_hints;
    QString m_path;
};

/// All that one framework works with.
struct Bench {
    PrivateBus daemon;
    std::optional<BusConnection> bus;
    ScriptedPlatform system;
    DisplayServer displayServer;
    RestartOffer restartOffer{system.centre};
    ReplacementWatch replacement;
    std::optional<ScriptedPackageKit> service;
    std::unique_ptr<LinuxUpdateFramework> framework;

    Bench()
    {
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", daemon.address().toUtf8());
        bus.emplace(BusConnection::Kind::System);
        service.emplace(daemon.connectClient(), packageKit, u"/"_s);
    }
    ~Bench() { qunsetenv("DBUS_SYSTEM_BUS_ADDRESS"); }

    void start(std::chrono::milliseconds firstCheck = 100h, bool downloads = false)
    {
        framework = std::make_unique<LinuxUpdateFramework>(
            LinuxUpdateFramework::Dependencies{
                *bus, system.store, system.centre,
                [this](UpdateSession &shown) {
                    return std::make_unique<UpdateDialog>(shown, displayServer, system.appearance);
                },
                u"1.0"_s, u"/opt/meterkin"_s, restartOffer, replacement},
            LinuxUpdateFramework::Times{3s, firstCheck});
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
        return QTest::qWaitFor([&] {
            framework->checkForUpdates(); // which does nothing before the service is there
            return framework->session() != nullptr;
        });
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
        bench.service->connection.unregisterService(packageKit);
        bench.start();
        QVERIFY(bench.framework->unavailableReason().contains(u"PackageKit"));
        bench.service->connection.registerService(packageKit);
        QTRY_VERIFY(bench.framework->canCheckForUpdates());
        bench.daemon.stop();
        QTRY_VERIFY(!bench.framework->canCheckForUpdates());
    }

    void checks()
    {
        Script unusable =
            listed(5,
                   {u";;;"_s, u"meterkin;1\x1b;amd64;shop"_s, update + QString(100'000, u'x'),
                    u"meterkin-data;1.1;amd64;shop"_s, u"meterkin;1.1;arm64;shop"_s});
        unusable.sent += listed(9, {update}).sent; // held back
        for (const QString &name : {u"Package"_s, u"ErrorCode"_s, u"Finished"_s})
            unusable.sent << std::pair(name, QVariantList{update});
        for (const auto &[scripts, phase, text] :
             {std::tuple(QHash<QString, Script>{{refresh, {{}, 1, Ending::Refuses}}},
                         Phase::Offered, u"1.1"),
              {{{listing, unusable}}, Phase::UpToDate, u""},
              {{{refresh, error(2)}, {listing, {}}}, Phase::Failed, u"network"},
              {{{search, {}}}, Phase::Failed, u"not installed as a package"}}) {
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
        QVariantList details(12, QStringList());
        details[0] = update;
        details[6] = details[9] = 0U;
        details[7] = u"x\x1b"_s.repeated(50'000);
        details[8] = details[10] = details[11] = QString();
        bench.service->scripts[u"GetUpdateDetail"_s] = {{{u"UpdateDetail"_s, details}}};
        bench.service->scripts[simulation] = listed(12, {u"libnew;1;amd64;shop"_s});
        bench.start();
        QVERIFY(bench.check());
        UpdateSession &session = bench.session();
        QTRY_VERIFY(!session.notes().isEmpty() && session.notes().size() < 5000);
        emit session.restartRequested();
        QCOMPARE(bench.restartOffer.accepted(), QString());
        emit session.installRequested();
        emit session.installRequested();
        QVERIFY(bench.waitFor(Phase::Installed));
        QCOMPARE(bench.service->calls.filter(u"Packages"_s),
                 QStringList({simulation, download, installation}));
        for (const QString &call : std::as_const(bench.service->calls))
            QCOMPARE(bench.service->hints[call].contains(u"interactive=true"_s),
                     call == installation);
        emit session.restartRequested();
        QCOMPARE(bench.restartOffer.accepted(), QCoreApplication::applicationFilePath());
    }

    void stopsAtAFailure()
    {
        for (const auto &[call, script, text] : // without a text the update is offered again
             {std::tuple(simulation, listed(13, {u"desktop;1;amd64;x"_s}), u"(desktop)"),
              {installation, Script{{}, 8}, u"signature"},
              {installation, Script{{}, 1, Ending::Refuses}, u"permission"},
              {installation, error(999, u"bad\nluck "_s.repeated(99'999)), u"says: bad luck"},
              {installation, error(17), u""},
              {installation, Script{{}, 1, Ending::Vanishes}, u"ended before"},
              {installation, Script{{}, 1, Ending::Hangs}, u"does not answer"}}) {
            Bench bench;
            bench.service->scripts[call] = script;
            bench.start();
            QVERIFY(bench.check() && bench.waitFor(Phase::Offered));
            emit bench.session().installRequested();
            QVERIFY(bench.waitFor(call));
            QVERIFY(bench.waitFor(QStringView(text).isEmpty() ? Phase::Offered : Phase::Failed));
            const QString problem = bench.session().problem();
            QVERIFY2(problem.contains(text) && problem.size() < 400, qPrintable(problem));
        }
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
            QCOMPARE(bench.service->calls.filter(u"Packages"_s),
                     downloads ? QStringList({simulation, download}) : QStringList());
            for (const QString &call : std::as_const(bench.service->calls))
                QVERIFY(bench.service->hints[call].contains(u"background=true"_s));
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

    void obeysTheUser()
    {
        Bench bench;
        bench.service->scripts[listing].ending = Ending::Hangs;
        bench.start(0ms);
        QVERIFY(bench.waitFor(listing));
        bench.service->scripts[listing].ending = Ending::Finishes;
        bench.service->scripts[download].ending = Ending::Hangs;
        bench.framework->checkForUpdates(); // ends the check in the background
        QVERIFY(bench.waitFor(Phase::Offered) && bench.waitFor(u"Cancel"_s));
        emit bench.session().installRequested();
        QVERIFY(bench.waitFor(download));
        bench.service->calls.clear();
        emit bench.session().cancelRequested();
        QCOMPARE(bench.session().phase(), Phase::Offered);
        QVERIFY(bench.waitFor(u"Cancel"_s) && !bench.service->calls.contains(installation));

        // An installation continues without its window.
        bench.service->scripts[download].ending = Ending::Finishes;
        bench.service->scripts[installation].ending = Ending::Hangs;
        emit bench.session().installRequested();
        QVERIFY(bench.waitFor(installation));
        for (QWindow *window : QGuiApplication::topLevelWindows())
            window->close();
        emit bench.replacement.replaced(); // by the installation
        bench.service->emitFromLast(u"Finished"_s, {1U, 5U});
        QTRY_COMPARE(bench.system.centre.posts.size(), 1U);
        QCOMPARE(bench.service->calls.last(), installation);
        emit bench.system.centre.clicked(bench.system.centre.posts[0].identifier);
        QCOMPARE(bench.restartOffer.accepted(), QCoreApplication::applicationFilePath());
    }
};

METERKIN_TEST(LinuxUpdateFrameworkTest);
#include "UpdateFrameworkTest.moc"
