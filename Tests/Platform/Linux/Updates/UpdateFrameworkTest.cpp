#include "Platform/Linux/Updates/UpdateFramework.h"
#include "Platform/DesktopAppearance.h"
#include "Platform/Linux/Updates/ScriptedPackageKit.h"
#include "Platform/WindowStyle.h"
#include "Support/PrivateBus.h"
#include "Support/ScriptedServices.h"
#include "Support/ScriptedStore.h"
#include "Support/TestMain.h"

#include <QGuiApplication>
#include <QWindow>
#include <QtTest>

#include <optional>

using Phase = UpdateSession::Phase;
using Script = ScriptedPackageKit::Script;
using Signals = QList<ScriptedPackageKit::Signal>;
using Ending = ScriptedPackageKit::Ending;
Q_DECLARE_METATYPE(Script)

namespace {

const QString installed = QStringLiteral("meterkin;1.0;amd64;installed");
const QString update = QStringLiteral("meterkin;1.1;amd64;shop");
const QString rehearsal = QStringLiteral("UpdatePackages 6 ") + update;
const QString download = QStringLiteral("UpdatePackages 10 ") + update;
const QString installation = QStringLiteral("UpdatePackages 2 ") + update;
constexpr uint normalUpdate = 5;
constexpr std::chrono::hours never{100};

struct Style : WindowStyle {
    void makeTitled(QQuickWindow &) override { }
    TitleBar makeOnboarding(QQuickWindow &) override { return TitleBar::System; }
    void present(QQuickWindow &window) override { window.show(); }
    void presentUnasked(QQuickWindow &) override { }
};

struct Appearance : DesktopAppearance {
    bool isDark() const override { return false; }
    double textScale() const override { return 1.0; }
};

ScriptedPackageKit::Signal package(uint info, const QString &id)
{
    return ScriptedPackageKit::package(info, id);
}

} // namespace

class LinuxUpdateFrameworkTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_daemon.emplace();
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", m_daemon->address().toUtf8());
        m_bus.emplace(BusConnection::Kind::System);
        m_store.emplace();
        m_centre.emplace();
        m_restarts = 0;
        m_service.emplace(m_daemon->connectClient());
        m_service->scripts[QStringLiteral("SearchFiles")] = {{package(1, installed)}};
        m_service->scripts[QStringLiteral("GetUpdates")] = {{package(normalUpdate, update)}};
    }

    void cleanup()
    {
        m_framework.reset();
        m_service.reset();
        m_bus.reset();
        m_daemon.reset();
        qunsetenv("DBUS_SYSTEM_BUS_ADDRESS");
    }

    void followsTheService()
    {
        m_service->vanish();
        make();
        QVERIFY(!m_framework->canCheckForUpdates());
        m_framework->start();
        QTRY_VERIFY(m_bus->connection());
        QVERIFY(m_framework->unavailableReason().contains(u"PackageKit"));
        for (int round = 0; round < 2; ++round) {
            m_service->appear();
            QTRY_VERIFY(m_framework->canCheckForUpdates());
            QCOMPARE(m_framework->unavailableReason(), QString());
            m_service->vanish();
            QTRY_VERIFY(!m_framework->canCheckForUpdates());
        }
        m_framework->checkForUpdates();
        QVERIFY(m_framework->session() == nullptr);
        m_service->appear();
        QTRY_VERIFY(m_framework->canCheckForUpdates());
        m_daemon->stop();
        QTRY_VERIFY(!m_framework->canCheckForUpdates());
    }

    void checks_data()
    {
        QTest::addColumn<QString>("method");
        QTest::addColumn<Script>("script");
        QTest::addColumn<Phase>("phase");
        QTest::addColumn<QString>("words");

        const QString list = QStringLiteral("GetUpdates");
        const QString refresh = QStringLiteral("RefreshCache");
        const QString search = QStringLiteral("SearchFiles");
        const auto listed = [](uint info, const char *id) {
            return Script{{package(info, QString::fromLatin1(id))}};
        };
        QTest::newRow("ours") << list << listed(5, "meterkin;1.1;amd64;shop") << Phase::Offered
                              << QStringLiteral("1.1");
        QTest::newRow("none") << list << Script() << Phase::UpToDate << QString();
        QTest::newRow("another's")
            << list << listed(5, "meterkin-data;1.1;amd64;shop") << Phase::UpToDate << QString();
        QTest::newRow("another machine's")
            << list << listed(5, "meterkin;1.1;arm64;shop") << Phase::UpToDate << QString();
        QTest::newRow("held back")
            << list << listed(9, "meterkin;1.1;amd64;shop") << Phase::UpToDate << QString();
        QTest::newRow("malformed")
            << list
            << Script{{package(5, QStringLiteral("meterkin")),
                       package(5, QStringLiteral(";;;")),
                       package(5, QStringLiteral("meterkin;1\x1b;amd64;shop")),
                       package(5, update + QString(100'000, u'x')),
                       {QStringLiteral("Package"), {update}},
                       {QStringLiteral("Package"), {}},
                       {QStringLiteral("ErrorCode"), {QStringLiteral("x")}},
                       {QStringLiteral("Finished"), {}}}}
            << Phase::UpToDate << QString();
        QTest::newRow("refusal to refresh")
            << refresh << Script{{}, 1, Ending::Refuses} << Phase::Offered << QStringLiteral("1.1");
        QTest::newRow("no package")
            << search << Script() << Phase::Failed << QStringLiteral("not installed as a package");
    }
    void checks()
    {
        QFETCH(const QString, method);
        QFETCH(const Script, script);
        QFETCH(const Phase, phase);
        QFETCH(const QString, words);
        m_service->scripts[method] = script;
        startChecking();
        QTRY_VERIFY(m_framework->session()->phase() != Phase::Checking);
        QCOMPARE(m_framework->session()->phase(), phase);
        const UpdateSession &session = *m_framework->session();
        QVERIFY2((session.offeredVersion() + session.problem()).contains(words),
                 qPrintable(session.problem()));
    }

    void doesNotGuessWithoutANetwork()
    {
        m_service->scripts[QStringLiteral("RefreshCache")] = {{ScriptedPackageKit::error(2)}, 2};
        startChecking();
        QTRY_COMPARE(m_framework->session()->phase(), Phase::Offered);
        m_service->scripts[QStringLiteral("GetUpdates")] = {};
        emit m_framework->session()->retryRequested();
        QTRY_COMPARE(m_framework->session()->phase(), Phase::Failed);
        QVERIFY(m_framework->session()->problem().contains(u"network"));
    }

    void installsNothingButOurPackage()
    {
        m_service->scripts[QStringLiteral("GetUpdateDetail")] = {
            {{QStringLiteral("UpdateDetail"),
              {update, QStringList(), QStringList(), QStringList(), QStringList(), QStringList(),
               0U, QString(100'000, u'x') + u'\x1b', QString(), 0U, QString(), QString()}}}};
        m_service->scripts[rehearsal] = {
            {package(11, update), package(12, QStringLiteral("libnew;1;amd64;shop"))}};
        startChecking();
        UpdateSession &session = *m_framework->session();
        QTRY_VERIFY(!session.notes().isEmpty());
        QVERIFY(session.notes().size() < 5000);
        emit session.restartRequested();
        emit session.installRequested();
        emit session.installRequested();
        QTRY_COMPARE(session.phase(), Phase::Installed);
        QCOMPARE(m_service->calls.filter(QStringLiteral("Packages")),
                 QStringList({rehearsal, download, installation}));
        for (const QString &call : std::as_const(m_service->calls))
            QCOMPARE(m_service->hints[call].contains(QStringLiteral("interactive=true")),
                     call == installation);
        QCOMPARE(m_restarts, 0);
        emit session.restartRequested();
        QCOMPARE(m_restarts, 1);
    }

    void doesNotGoOn_data()
    {
        QTest::addColumn<QString>("call");
        QTest::addColumn<Script>("script");
        QTest::addColumn<QString>("words"); // empty: offered again

        const auto failed = [](uint code, const QString &details = {}) {
            return Script{{ScriptedPackageKit::error(code, details)}, 2};
        };
        const auto row = [](const char *name, const QString &call, const Script &script,
                            const char *words) {
            QTest::newRow(name) << call << script << QString::fromLatin1(words);
        };
        row("removes others", rehearsal, Script{{package(13, QStringLiteral("desktop;1;amd64;x"))}},
            "(desktop)");
        row("replaces us", rehearsal, Script{{package(13, installed)}, 2}, "no reason");
        row("untrusted", installation, Script{{}, 8}, "signature");
        row("not authorised", installation, failed(48), "permission");
        row("refused", installation, Script{{}, 1, Ending::Refuses}, "permission");
        row("own words", installation,
            failed(999, QStringLiteral("bad\n\tluck ") + QString(1'000'000, u'x')),
            "manager says: bad luck x");
        row("cancelled", installation, failed(17), "");
        row("cancelled without a code", download, Script{{}, 3}, "");
        row("vanishes", installation, Script{{}, 1, Ending::Vanishes}, "ended before");
        row("hangs", installation, Script{{}, 1, Ending::Hangs}, "does not answer");
    }
    void doesNotGoOn()
    {
        QFETCH(const QString, call);
        QFETCH(const Script, script);
        QFETCH(const QString, words);
        m_service->scripts[call] = script;
        m_service->answersProperties = script.ending != Ending::Hangs;
        startChecking(script.ending == Ending::Hangs ? std::chrono::milliseconds(3000)
                                                     : PackageKitTransaction::Patience);
        UpdateSession &session = *m_framework->session();
        QTRY_COMPARE(session.phase(), Phase::Offered);
        emit session.installRequested();
        QTRY_COMPARE_WITH_TIMEOUT(session.phase(), words.isEmpty() ? Phase::Offered : Phase::Failed,
                                  30'000);
        QVERIFY2(session.problem().contains(words), qPrintable(session.problem()));
        QVERIFY(session.problem().size() < 400);
        QVERIFY(m_service->calls.contains(call));
    }

    void canBeStopped()
    {
        m_service->scripts[QStringLiteral("GetUpdates")].ending = Ending::Hangs;
        startChecking();
        QTRY_VERIFY(m_service->calls.contains(QStringLiteral("GetUpdates 2")));
        QVERIFY(!m_framework->canCheckForUpdates());
        emit m_framework->session()->cancelRequested();
        QVERIFY(m_framework->session() == nullptr);
        QTRY_VERIFY(m_service->calls.contains(QStringLiteral("Cancel")));

        m_service->scripts[QStringLiteral("GetUpdates")].ending = Ending::Finishes;
        m_service->scripts[download].ending = Ending::Hangs;
        QTRY_VERIFY(m_framework->canCheckForUpdates());
        m_framework->checkForUpdates();
        QTRY_COMPARE(m_framework->session()->phase(), Phase::Offered);
        emit m_framework->session()->installRequested();
        QTRY_VERIFY(m_service->calls.contains(download));
        m_service->calls.clear();
        emit m_framework->session()->cancelRequested();
        QCOMPARE(m_framework->session()->phase(), Phase::Offered);
        QTRY_VERIFY(m_service->calls.contains(QStringLiteral("Cancel")));
        QVERIFY(!m_service->calls.contains(installation));

        m_service->vanish();
        emit m_framework->session()->installRequested();
        QTRY_COMPARE(m_framework->session()->phase(), Phase::Failed);
        QVERIFY(m_framework->session()->problem().contains(u"does not answer"));
    }

    void givesWayToTheUser()
    {
        Script &list = m_service->scripts[QStringLiteral("GetUpdates")];
        list.ending = Ending::Hangs;
        make({PackageKitTransaction::Patience, std::chrono::milliseconds(0)});
        m_framework->start();
        QTRY_VERIFY(m_service->calls.contains(QStringLiteral("GetUpdates 2")));
        list.ending = Ending::Finishes;
        m_framework->checkForUpdates();
        QTRY_COMPARE(m_framework->session()->phase(), Phase::Offered);
        QVERIFY(m_service->calls.contains(QStringLiteral("Cancel")));
    }

    void neverInstallsInTheBackground_data()
    {
        QTest::addColumn<bool>("downloads");
        QTest::newRow("downloads") << true;
        QTest::newRow("only tells") << false;
    }
    void neverInstallsInTheBackground()
    {
        QFETCH(const bool, downloads);
        const QString last = downloads ? download : QStringLiteral("GetUpdates 2");
        for (int day = 0; day < 2; ++day) { // the second tells nothing new
            m_store->stored.remove(QStringLiteral("updateLastCheck"));
            m_service->calls.clear();
            make({PackageKitTransaction::Patience, std::chrono::milliseconds(0)});
            m_framework->setAutomaticallyDownloadsUpdates(downloads);
            m_framework->start();
            QTRY_VERIFY(m_service->calls.contains(last));
            QTRY_VERIFY(m_framework->canCheckForUpdates());
            QTRY_COMPARE(m_centre->posts.size(), 1U);
            QCOMPARE(m_centre->posts[0].title, QStringLiteral("Meterkin 1.1 is available"));
        }
        QCOMPARE(m_service->calls.filter(QStringLiteral("Packages")),
                 downloads ? QStringList({rehearsal, download}) : QStringList());
        for (const QString &call : std::as_const(m_service->calls))
            QVERIFY(m_service->hints[call].contains(QStringLiteral("background=true")));

        emit m_centre->clicked(QStringLiteral("org.meterkin.Meterkin.other"));
        QVERIFY(m_framework->session() == nullptr);
        emit m_centre->clicked(m_centre->posts[0].identifier);
        QCOMPARE(m_framework->session()->phase(), Phase::Offered);
        QCOMPARE(m_framework->session()->isDownloaded(), downloads);

        // Looked for within the day already.
        m_service->calls.clear();
        make({PackageKitTransaction::Patience, std::chrono::milliseconds(0)});
        m_framework->start();
        QTRY_VERIFY(m_framework->canCheckForUpdates());
        QTest::qWait(1'100); // a very coarse timer may take until the next full second
        QCOMPARE(m_service->calls, QStringList());
    }

    void goesOnInstallingWithoutItsWindow()
    {
        startChecking();
        QTRY_COMPARE(m_framework->session()->phase(), Phase::Offered);
        m_service->scripts[installation].ending = Ending::Hangs;
        emit m_framework->session()->installRequested();
        QTRY_VERIFY(m_service->calls.contains(installation));
        window()->close();
        m_service->finishLast();
        QTRY_COMPARE(m_centre->posts.size(), 1U);
        QCOMPARE(m_service->calls.last(), installation); // nobody has cancelled it
        QVERIFY(m_centre->posts[0].title.contains(u"installed"));
        emit m_centre->clicked(m_centre->posts[0].identifier);
        QCOMPARE(m_framework->session()->phase(), Phase::Installed);
        QVERIFY(window()->isVisible());
    }

private:
    void make(LinuxUpdateFramework::Times times = {PackageKitTransaction::Patience, never})
    {
        m_framework = std::make_unique<LinuxUpdateFramework>(
            LinuxUpdateFramework::Surroundings{
                *m_bus, *m_store, m_style, m_appearance, *m_centre, QStringLiteral("1.0"),
                QStringLiteral("/opt/meterkin"), [this] { ++m_restarts; }},
            times);
    }

    static QWindow *window()
    {
        for (QWindow *window : QGuiApplication::topLevelWindows()) {
            if (window->isVisible())
                return window;
        }
        return nullptr;
    }

    void startChecking(std::chrono::milliseconds patience = PackageKitTransaction::Patience)
    {
        make({patience, never});
        m_framework->start();
        QTRY_VERIFY(m_framework->canCheckForUpdates());
        m_framework->checkForUpdates();
        QVERIFY(m_framework->session() != nullptr);
    }

    std::optional<PrivateBus> m_daemon;
    std::optional<BusConnection> m_bus;
    std::optional<ScriptedStore> m_store;
    std::optional<ScriptedNotificationCentre> m_centre;
    std::optional<ScriptedPackageKit> m_service;
    Style m_style;
    Appearance m_appearance;
    int m_restarts = 0;
    std::unique_ptr<LinuxUpdateFramework> m_framework;
};

METERKIN_TEST(LinuxUpdateFrameworkTest);
#include "UpdateFrameworkTest.moc"
