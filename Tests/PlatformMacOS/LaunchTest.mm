#include "AppDelegate.h"
#include "Fakes/CallLog.h"
#import "Fakes/FakeAppearance.h"
#include "Fakes/FakeController.h"
#include "Fakes/FakeHotkeys.h"
#include "Fakes/FakeMach.h"
#include "Fakes/FakeMainAppService.h"
#import "Fakes/FakeNotificationCenter.h"
#import "Fakes/FakeStatusBar.h"
#import "Fakes/FakeUpdater.h"
#import "Fakes/FakeViews.h"
#import "Fakes/OtherBundle.h"
#include "Platform/ProgramHost.h"
#include "Platform/macOS/FoundationValues.h"
#include "Platform/macOS/UserDefaultsStore.h"
#include "Support/TestMain.h"

#include <QTemporaryDir>
#include <QtTest>

/// The whole program over the fakes: the order of its launch, and what users do with it.
class LaunchTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        FakeController::driver() = {};
        FakeController::driver().keys = {{"FNum", {"ui8 ", 1, {1}}},
                                         {"F0Ac", {"flt ", 4, {0, 0, 150, 68}}}};
        FakeMach::kernel() = {};
        FakeMach::kernel().coreCount = 2;
        FakeMach::kernel().ticks.assign(8, 100);
        FakeMach::kernel().pageWords.assign(40, 0);
        FakeHotkeys::manager() = {};
        FakeMainAppService::status = 0;
        FakeMainAppService::works = true;
        FakeStatusBar::givesButtons = true;
        FakeStatusBar::appearance = fakeAppearance(NSAppearanceNameAqua);
        setApplicationAppearance(fakeAppearance(NSAppearanceNameAqua));

        UserDefaultsStore store;
        store.setBoolean(QStringLiteral("onboardingShown"), false);
        store.setText(QStringLiteral("menuBarMetric"), QStringLiteral("Fan Speed"));
        store.setNumber(QStringLiteral("updateInterval"), 0.05);
        store.setBoolean(QStringLiteral("launchAtLogin"), true);
        store.setBoolean(QStringLiteral("alertFanSpeed"), true);
        store.setBoolean(QStringLiteral("hotkeyEnabled"), true);
        store.setInteger(QStringLiteral("hotkeyKeyCode"), 46);
        store.setInteger(QStringLiteral("hotkeyModifiers"), 0x1800);
        store.setBoolean(QStringLiteral("SUAutomaticallyUpdate"), false);

        m_bundle.emplace(m_folder.filePath(QStringLiteral("Meterkin.app")),
                         "{ CFBundleIdentifier = \"org.meterkin.Meterkin\"; }");
        [[UNUserNotificationCenter currentNotificationCenter] forgetQuestions];
        CallLog::take();
        m_host = ProgramHost::make();
        QCOMPARE(m_host->claimInstance({}), ProgramHost::Claim::First);
        m_delegate = std::make_unique<AppDelegate>(m_host->platform());
        m_delegate->applicationDidFinishLaunching();
        m_launch = CallLog::take();
        m_seen.clear();
        [[UNUserNotificationCenter currentNotificationCenter]
            answerSettings:UNAuthorizationStatusAuthorized];
    }
    void cleanup()
    {
        m_delegate.reset();
        m_host.reset();
        // A sample may be under way still. It owns the readers, and the last of what they do is to
        // close the controller; only then may the fakes change.
        QTRY_VERIFY(hasCall(QStringLiteral("IOServiceClose 99")));
        QCOMPARE(FakeHotkeys::manager().handlers + FakeHotkeys::manager().hotkeys, 0);
        QCOMPARE(FakeMach::kernel().hostReferences, 0);
        QVERIFY(hasCall(QStringLiteral("removeStatusItem: 1")));
        m_bundle.reset();
    }

    void launchesInOrder()
    {
        // The sampling thread notes its own calls between these.
        const QStringList order{
            QStringLiteral("IOServiceMatching AppleSMC"), // the collector
            QStringLiteral("settings"), // the alerts
            QStringLiteral("controller 1"), // the updates
            QStringLiteral("downloads 0"),
            QStringLiteral("observe canCheckForUpdates 5"),
            QStringLiteral("statusItemWithLength: -1"),
            QStringLiteral("setAttributedTitle"),
            QStringLiteral("behavior 1"), // the popover
            QStringLiteral("register"), // the login item
            QStringLiteral("install application 1 6b657962 5"), // the hot key
            QStringLiteral("register 46 0x1800 as 4d4b4854 1 at application 0"),
        };
        QStringList seen = m_launch;
        seen.removeIf([&order](const QString &call) { return !order.contains(call); });
        QCOMPARE(seen, order);
    }

    void showsAndAlerts()
    {
        FakeStatusBarButton *button = FakeStatusBar::lastButton;
        QTRY_COMPARE(textOf(button.accessibilityLabel), QStringLiteral("meterkin: 1200 RPM"));
        QCOMPARE(titleOf(button), QStringLiteral("1200 RPM"));
        {
            const std::lock_guard lock(FakeController::mutex);
            FakeController::driver().keys["F0Ac"].bytes = {0, 64, 156, 69}; // 5000
        }
        QTRY_COMPARE(titleOf(button), QStringLiteral("5000 RPM"));
        QTRY_VERIFY(hasCall(QStringLiteral("Fan speed is 5000 RPM")));
        // Red at last, in the system's own colour.
        const auto color = [button] {
            return catalogueName([button.attributedTitle attribute:NSForegroundColorAttributeName
                                                           atIndex:0
                                                    effectiveRange:nullptr]);
        };
        QTRY_COMPARE(textOf(color()), QStringLiteral("systemRedColor"));
    }

    void opensAndCloses()
    {
        FakeStatusBarButton *button = FakeStatusBar::lastButton;
        placeInWindow(button, QStringLiteral("menu bar"));
        [button press];
        QTRY_VERIFY(m_host->platform().popover().isShown());
        QVERIFY(hasCall(QStringLiteral("show ")));
        FakeHotkeys::manager().press();
        QTRY_VERIFY(!m_host->platform().popover().isShown());
    }

    void greets()
    {
        QTRY_VERIFY(m_delegate->windows().onboardingWindow() != nullptr);
        QTRY_VERIFY(hasCall(QStringLiteral("styleMask 32771")));
        m_delegate->completeOnboarding();
        QTRY_VERIFY(hasCall(QStringLiteral("malloc_zone_pressure_relief all 0")));
        QVERIFY(m_host->platform().defaultsStore().boolean(QStringLiteral("onboardingShown")));
        for (int opened = 1; opened <= 2; ++opened) {
            m_delegate->openSettings();
            QVERIFY(m_delegate->windows().settingsWindow()->isVisible());
            m_seen << CallLog::take();
            QCOMPARE(m_seen.count(QStringLiteral("window styleMask 3")), opened);
            m_delegate->windows().settingsWindow()->close();
        }
    }

private:
    static QString titleOf(FakeStatusBarButton *button)
    {
        return textOf(button.attributedTitle.string);
    }
    /// Whether there has been one, since the launch, with that in it.
    bool hasCall(const QString &text)
    {
        m_seen << CallLog::take();
        return !m_seen.filter(text).isEmpty();
    }

    QTemporaryDir m_folder;
    std::optional<OtherBundle> m_bundle;
    std::unique_ptr<ProgramHost> m_host;
    std::unique_ptr<AppDelegate> m_delegate;
    QStringList m_launch;
    QStringList m_seen;
};

METERKIN_TEST(LaunchTest);
#include "LaunchTest.moc"
