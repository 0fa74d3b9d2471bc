#include "AppDelegate.h"

#include "Services/LaunchAtLogin.h"

#include <QCoreApplication>
#include <QPointer>
#include <QThread>

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace {

constexpr std::chrono::milliseconds OnboardingDelay{500};

const QString onboardingShownKey = QStringLiteral("onboardingShown");

[[noreturn]] void fatal(const char *reason)
{
    std::fprintf(stderr, "Fatal error: %s (Meterkin/AppDelegate)\n", reason);
    std::abort();
}

} // namespace

AppDelegate::AppDelegate(Platform &platform, MonotonicClock clock, WallClock wallClock,
                         QObject *parent)
    : QObject(parent)
    , m_platform(platform)
    , m_clock(std::move(clock))
    , m_collector(platform.makeMetricSources(), std::move(wallClock))
    , m_alertManager(platform.notificationCentre())
    , m_settingsVM(platform.defaultsStore())
    , m_hotkeyManager(platform.hotkeyRegistrar())
    , m_updaterController(platform.updateFramework(), platform.defaultsStore(),
                          platform.informationDictionary(), checkServices())
    , m_diskImageCleanup(platform.diskImages(), platform.bundlePath())
{
    connect(&platform.notificationCentre(), &NotificationCentre::clicked, this,
            &AppDelegate::handleNotificationClick);
}

AppDelegate::~AppDelegate() = default;

UpdaterController::CheckServices AppDelegate::checkServices()
{
    return {.readFeed =
                [this](const QUrl &feed, QObject *receiver, std::function<void(bool)> done) {
                    if (Windows *loaded = windows())
                        loaded->readFeed(feed, receiver, std::move(done));
                },
            .showAlert =
                [this](const QString &messageText, const QString &informativeText) {
                    if (Windows *loaded = windows())
                        loaded->showAlert(messageText, informativeText);
                }};
}

Windows *AppDelegate::windows()
{
    if (m_windows)
        return m_windows.get();
    m_windows = m_platform.makeWindows(m_settingsVM, m_updaterController, dashboard());
    if (!m_windows)
        return nullptr;
    const Windows *made = m_windows.get();
    connect(made, &Windows::settingsRequested, this, &AppDelegate::openSettings);
    connect(made, &Windows::quitRequested, this, &AppDelegate::quit);
    connect(made, &Windows::dashboardCloseRequested, this, &AppDelegate::closeDashboard);
    connect(made, &Windows::intervalChosen, &m_collector, &MetricCollector::start);
    connect(made, &Windows::launchAtLoginChosen, this,
            [this](bool wish) { setLaunchAtLogin(m_settingsVM, wish, m_platform.loginItem()); });
    connect(made, &Windows::onboardingStarted, this, &AppDelegate::rememberOnboarding);
    connect(made, &Windows::onboardingCompleted, this, &AppDelegate::completeOnboarding);
    return m_windows.get();
}

void AppDelegate::applicationDidFinishLaunching()
{
    requireMainThread();
    registerSettingsDefaults(m_platform.defaultsStore());
    m_dashboardVM = std::make_unique<DashboardViewModel>(m_collector);

    m_statusItem = m_platform.makeStatusItem();
    connect(m_statusItem.get(), &StatusItem::clicked, this, &AppDelegate::togglePopover);
    connect(m_statusItem.get(), &StatusItem::openDashboardRequested, this,
            &AppDelegate::showDashboard);
    connect(m_statusItem.get(), &StatusItem::openSettingsRequested, this,
            &AppDelegate::openSettings);
    connect(m_statusItem.get(), &StatusItem::quitRequested, this, &AppDelegate::quit);
    m_title = std::make_unique<StatusTitle>(*m_statusItem, *m_dashboardVM, m_settingsVM, m_clock);

    synchronizeLaunchAtLogin(m_settingsVM, m_platform.loginItem());

    m_collector.onTick = [this] { handleTick(); };
    m_watch = std::make_unique<ReadingWatch>(
        m_collector,
        ReadingWatch::Watched{m_settingsVM, m_alertManager, *m_dashboardVM, *m_statusItem,
                              [this] { return m_windows && m_windows->isDashboardShown(); }});
    m_collector.start(m_settingsVM.intervalInEffect());

    m_displaySettingsObserver = std::make_unique<ObservationScope>(
        [this] {
            m_settingsVM.menuBarMetric();
            m_alertManager.hasPermission();
            for (const SystemMetric metric : allMetrics) {
                m_settingsVM.thresholds(metric);
                m_settingsVM.of(metric)->isAlertOn();
            }
        },
        [this] {
            m_collector.publishNow();
            m_watch->update();
            m_title->updateStatusItem();
        });
    m_hotkeySettingsObserver = std::make_unique<ObservationScope>(
        [this] {
            m_settingsVM.hotkeyEnabled();
            m_settingsVM.hotkeyKeyCode();
            m_settingsVM.hotkeyModifiers();
        },
        [this] { registerHotkey(); });
    registerHotkey();

    m_diskImageCleanup.start();

    if (!m_platform.defaultsStore().boolean(onboardingShownKey))
        QTimer::singleShot(OnboardingDelay, this, &AppDelegate::showOnboarding);
}

void AppDelegate::handleTick()
{
    requireMainThread();
    dashboard().update();
    // Of those that come together the last one is seen.
    if (!m_collector.hasMore())
        m_title->updateStatusItem();
    m_alertManager.checkAlerts(m_settingsVM, dashboard(), m_collector.latestTime());
    // A computer without fans must not keep a fan title. Once only, or nobody could pick it; and
    // not before the fans have answered.
    if (m_collector.areFansKnown() && !std::exchange(m_hasCheckedPresence, true)
        && !dashboard().isPresent(m_settingsVM.menuBarMetric()))
        m_settingsVM.setMenuBarMetric(SystemMetric::MemoryUsage);
    if (!m_collector.hasMore())
        m_watch->handleReading();
    emit tickHandled();
}

void AppDelegate::registerHotkey()
{
    if (!m_settingsVM.hotkeyEnabled() || m_settingsVM.hotkeyKeyCode() == 0) {
        m_hotkeyManager.unregister();
        return;
    }
    m_hotkeyManager.registerHotkey(
        m_settingsVM.hotkeyKeyCode(), m_settingsVM.hotkeyModifiers(), [self = QPointer(this)] {
            if (self)
                QMetaObject::invokeMethod(self, &AppDelegate::togglePopover, Qt::QueuedConnection);
        });
}

void AppDelegate::togglePopover()
{
    if (!statusItem().hasButton())
        return;
    if (m_windows && m_windows->isDashboardShown())
        m_windows->closeDashboard();
    else if (!m_windows || !m_windows->swallowsClick(statusItem().geometry()))
        showDashboard();
}

void AppDelegate::showDashboard()
{
    if (!statusItem().hasButton())
        return;
    m_collector.publishNow();
    if (Windows *loaded = windows())
        loaded->showDashboard(statusItem().geometry());
    m_watch->update();
}

void AppDelegate::handleNotificationClick(const QString &identifier)
{
    if (identifier.startsWith(AlertManager::identifierPrefix))
        showDashboard();
}

void AppDelegate::closeDashboard()
{
    if (m_windows)
        m_windows->closeDashboard();
}

void AppDelegate::openSettings()
{
    closeDashboard();
    m_collector.publishNow();
    if (Windows *loaded = windows())
        loaded->openSettings();
}

void AppDelegate::showOnboarding()
{
    if (Windows *loaded = windows())
        loaded->showOnboarding();
}

void AppDelegate::rememberOnboarding()
{
    m_platform.defaultsStore().setBoolean(onboardingShownKey, true);
}

void AppDelegate::completeOnboarding()
{
    rememberOnboarding();
    if (m_windows)
        m_windows->closeOnboarding();
}

void AppDelegate::quit()
{
    QCoreApplication::quit();
}

DashboardViewModel &AppDelegate::dashboard()
{
    if (!m_dashboardVM)
        fatal("the dashboard model is missing");
    return *m_dashboardVM;
}

StatusItem &AppDelegate::statusItem()
{
    if (!m_statusItem)
        fatal("the status item is missing");
    return *m_statusItem;
}

void AppDelegate::requireMainThread() const
{
    if (QThread::currentThread() != thread())
        fatal("Incorrect actor executor assumption; Expected same executor as the main thread");
}
