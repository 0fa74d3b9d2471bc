#include "MeterkinApp.h"

#include "AppDelegate.h"
#include "Platform/Linux/BatchScheduling.h"
#include "Platform/Linux/DisplaySelection.h"
#include "Platform/Linux/LinuxPlatform.h"
#include "Platform/Linux/SingleInstance.h"
#include "Platform/Linux/TerminationSignals.h"

#include <QQuickWindow>
#include <QSessionManager>

#include <cstdio>
#include <cstdlib>

MeterkinApp::MeterkinApp(int &argc, char **argv)
{
    if (!selectDisplay()) {
        std::fputs("meterkin: no display: start it inside a desktop session\n", stderr);
        std::exit(EXIT_FAILURE);
    }
    useBatchScheduling();
    m_application = std::make_unique<QGuiApplication>(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("meterkin"));
    QGuiApplication::setDesktopFileName(QStringLiteral("org.meterkin.Meterkin"));
    QGuiApplication::setQuitOnLastWindowClosed(false);
    // What changes once in seconds needs no graphics processor, whose driver costs more than it
    // all.
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    // The autostart entry brings us back after a login, not the session's memory.
    QObject::connect(
        qGuiApp, &QGuiApplication::saveStateRequest, qGuiApp,
        [](QSessionManager &session) { session.setRestartHint(QSessionManager::RestartNever); });
}

MeterkinApp::~MeterkinApp() = default;

int MeterkinApp::run()
{
    m_signals = std::make_unique<TerminationSignals>();
    QObject::connect(m_signals.get(), &TerminationSignals::received, qGuiApp,
                     &QCoreApplication::quit);

    m_instance = std::make_unique<SingleInstance>();
    if (!m_instance->claim())
        return EXIT_SUCCESS;

    m_platform = std::make_unique<LinuxPlatform>();
    m_delegate = std::make_unique<AppDelegate>(*m_platform);
    QObject::connect(m_instance.get(), &SingleInstance::startedAgain, m_delegate.get(),
                     &AppDelegate::showDashboard);
    m_delegate->applicationDidFinishLaunching();
    return QGuiApplication::exec();
}
