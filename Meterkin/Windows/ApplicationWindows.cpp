#include "Windows/ApplicationWindows.h"

#include "Model/DashboardViewModel.h"
#include "Model/SettingsViewModel.h"
#include "Platform/Platform.h"
#include "Services/HotkeyRecorder.h"
#include "Updates/UpdaterController.h"
#include "Views/ApplicationIcon.h"
#include "Views/ViewEngine.h"
#include "Views/WindowContent.h"
#include "Views/WindowDragArea.h"
#include "Windows/UpdateFeedProbe.h"

#include <QUrl>

#include <utility>

namespace {

// Points; the settings window grows to what its content asks for, so that nothing is cut off.
constexpr QSize SettingsSize(450, 520);
constexpr QRgb OnboardingBackground = qRgb(13, 17, 23);

} // namespace

ApplicationWindows::ApplicationWindows(Platform &platform, std::unique_ptr<WindowSystem> system,
                                       SettingsViewModel &settings, UpdaterController &updater,
                                       DashboardViewModel &dashboard)
    : m_platform(platform)
    , m_settings(settings)
    , m_updater(updater)
    , m_dashboard(dashboard)
    , m_system(std::move(system))
{
    m_system->popover().setContent([this] { return makeDashboard(); });
}

ApplicationWindows::~ApplicationWindows()
{
    // The views before their engine.
    m_system->popover().setContent({});
    m_settingsWindow.reset();
    m_onboardingWindow.reset();
}

void ApplicationWindows::showDashboard(const QRect &item)
{
    if (!isDashboardShown())
        m_system->popover().show(item);
}

bool ApplicationWindows::swallowsClick(const QRect &item)
{
    return m_system->popover().swallowsClick(item);
}

std::unique_ptr<QQuickItem> ApplicationWindows::makeDashboard()
{
    std::unique_ptr<QQuickItem> view =
        makeView(QStringLiteral("Views/Dashboard/DashboardView"),
                 {{QStringLiteral("viewModel"), QVariant::fromValue(&m_dashboard)},
                  {QStringLiteral("settings"), QVariant::fromValue(&m_settings)}});
    if (!view)
        return view;
    connect(view.get(), SIGNAL(openSettings()), this, SIGNAL(settingsRequested()));
    connect(view.get(), SIGNAL(quit()), this, SIGNAL(quitRequested()));
    connect(view.get(), SIGNAL(closeRequested()), this, SIGNAL(dashboardCloseRequested()));
    connect(view.get(), &QObject::destroyed, this, &ApplicationWindows::giveUpEngineSoon);
    m_dashboardView = view.get();
    return view;
}

void ApplicationWindows::openSettings()
{
    m_platform.defaultsStore().retryStorage(); // the window shows whether it works
    if (!m_settingsWindow) {
        m_settingsWindow = makeSettingsWindow();
        if (!m_settingsWindow)
            return;
    } else if (!m_settingsWindow->isVisible()) {
        // Closing has destroyed the system window; a new one has no style yet.
        m_system->windowStyle().makeTitled(*m_settingsWindow);
        m_settingsWindow->setPosition(
            m_settingsWindow->position()); // or the window manager places it again
    }
    m_system->windowStyle().present(*m_settingsWindow);
}

std::unique_ptr<QQuickWindow> ApplicationWindows::makeSettingsWindow()
{
    m_recorder = std::make_unique<HotkeyRecorder>(
        m_settings,
        HotkeyRecorder::Dependencies{m_platform.keyDownMonitor(), m_platform.hotkeyRegistrar(),
                                     m_platform.keyboardLayout()});
    std::unique_ptr<QQuickItem> view = makeView(
        QStringLiteral("Views/Settings/SettingsView"),
        {{QStringLiteral("settings"), QVariant::fromValue(&m_settings)},
         {QStringLiteral("fanCount"), m_dashboard.fanCount()},
         {QStringLiteral("updaterController"), QVariant::fromValue(&m_updater)},
         {QStringLiteral("recorder"), QVariant::fromValue(m_recorder.get())},
         {QStringLiteral("version"),
          m_platform.informationDictionary().value(QStringLiteral("CFBundleShortVersionString"))},
         {QStringLiteral("projectLink"), QUrl(QStringLiteral(METERKIN_PROJECT_URL))}});
    if (!view) {
        m_recorder.reset();
        return nullptr;
    }
    connect(&m_dashboard, &DashboardViewModel::fanCountChanged, view.get(),
            [this, item = view.get()] { item->setProperty("fanCount", m_dashboard.fanCount()); });
    connect(view.get(), SIGNAL(restartCollector(double)), this, SIGNAL(intervalChosen(double)));
    connect(view.get(), SIGNAL(launchAtLoginChosen(bool)), this, SIGNAL(launchAtLoginChosen(bool)));
    connect(view.get(), SIGNAL(checkForUpdates()), &m_updater, SLOT(checkForUpdates()));

    auto window = std::make_unique<QQuickWindow>();
    window->setTitle(tr("meterkin Settings"));
    window->setIcon(applicationIcon());
    followColor(*window, *view);
    m_system->windowStyle().makeTitled(*window);
    connect(window.get(), &QQuickWindow::visibleChanged, this, [this, made = window.get()] {
        if (made->isVisible() || made != m_settingsWindow.get())
            return;
        m_recorder->cancel(); // a hidden window does not get the key that would end it
        m_settingsWindow->releaseResources();
        m_engine->trimComponentCache();
        m_engine->collectGarbage();
        giveUpEngineSoon();
    });
    fillWindow(*window, std::move(view), SettingsSize);
    return window;
}

void ApplicationWindows::showOnboarding()
{
    closeOnboarding();
    m_onboardingWindow = makeOnboardingWindow();
    if (!m_onboardingWindow)
        return;
    m_system->windowStyle().presentUnasked(*m_onboardingWindow);
}

std::unique_ptr<QQuickWindow> ApplicationWindows::makeOnboardingWindow()
{
    std::unique_ptr<QQuickItem> view =
        makeView(QStringLiteral("Views/Onboarding/OnboardingView"),
                 {{QStringLiteral("computerWord"), m_platform.computerWord()}});
    if (!view)
        return nullptr;
    auto window = std::make_unique<QQuickWindow>();
    window->setTitle(QStringLiteral("meterkin"));
    window->setIcon(applicationIcon());
    window->setColor(QColor(OnboardingBackground));
    const bool hasTitleBar =
        m_system->windowStyle().makeOnboarding(*window) == WindowStyle::TitleBar::System;
    view->setProperty("systemTitleBar", hasTitleBar);
    view->setProperty("rounded", window->color().alpha() == 0);
    connect(view.get(), SIGNAL(getStarted()), this, SIGNAL(onboardingStarted()));
    connect(view.get(), SIGNAL(complete()), this, SIGNAL(onboardingCompleted()));
    connect(view.get(), SIGNAL(closeRequested()), window.get(), SLOT(close()));
    connect(window.get(), &QQuickWindow::visibleChanged, this, [this, made = window.get()] {
        // A window that is replaced or destroyed hides, too: nothing to do then.
        if (made->isVisible() || made != m_onboardingWindow.get())
            return;
        m_onboardingWindow.release()->deleteLater(); // not from within its own signal
        giveUpEngineSoon();
    });
    // The animations start with the first frame.
    connect(
        window.get(), &QQuickWindow::frameSwapped, view.get(),
        [item = view.get()] { QMetaObject::invokeMethod(item, "start"); },
        Qt::SingleShotConnection);
    fillWindow(*window, std::move(view), QSize());
    new WindowDragArea(*window); // belongs to the window
    return window;
}

void ApplicationWindows::closeOnboarding()
{
    if (m_onboardingWindow)
        m_onboardingWindow->close();
}

void ApplicationWindows::showAlert(const QString &messageText, const QString &informativeText)
{
    m_system->informationAlert().run(messageText, informativeText);
}

void ApplicationWindows::readFeed(const QUrl &feed, QObject *receiver,
                                  std::function<void(bool listsItems)> done)
{
    UpdateFeedProbe::start(feed, receiver, std::move(done));
}

std::unique_ptr<QQuickItem> ApplicationWindows::makeView(const QString &view,
                                                         const QVariantMap &properties)
{
    std::unique_ptr<QQuickItem> item = engine().create(view, properties);
    if (!item) {
        m_platform.notificationCentre().post({QStringLiteral("org.meterkin.Meterkin.windows"),
                                              tr("Meterkin cannot show this window"),
                                              tr("A part of Qt is missing on this computer.")});
        giveUpEngineSoon();
    }
    return item;
}

ViewEngine &ApplicationWindows::engine()
{
    if (!m_engine) {
        m_engine = std::make_unique<ViewEngine>();
        m_engine->appearance()->follow(m_platform.desktopAppearance());
    }
    return *m_engine;
}

void ApplicationWindows::giveUpEngineSoon()
{
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (!m_dashboardView && !m_settingsWindow && !m_onboardingWindow)
                m_engine.reset();
            m_platform.giveMemoryBack();
        },
        Qt::QueuedConnection);
}
