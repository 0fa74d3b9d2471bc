#include "MeterkinApp.h"

#include "AppDelegate.h"
#include "Platform/Linux/BatchScheduling.h"
#include "Platform/Linux/BusSelection.h"
#include "Platform/Linux/DisplaySelection.h"
#include "Platform/Linux/LinuxPlatform.h"
#include "Platform/Linux/SingleInstance.h"
#include "Platform/Linux/TerminationSignals.h"

#include <QFile>
#include <QQuickWindow>
#include <QSessionManager>

#include <csignal>
#include <cstdio>
#include <cstdlib>

#include <unistd.h>

namespace {

/// At its end the kit waits for the names and proxies that it is looking up, which can take as long
/// as the network likes. By then all that is ours has been stored.
void boundTheEnd()
{
    std::signal(SIGALRM, [](int) { _exit(EXIT_SUCCESS); });
    alarm(5);
}

} // namespace

MeterkinApp::MeterkinApp(int &argc, char **argv)
    : m_arguments(argv, argv + argc + 1)
{
    if (!selectDisplay()) {
        std::fputs("meterkin: no display: start it inside a desktop session\n", stderr);
        std::exit(EXIT_FAILURE);
    }
    selectBus();
    useBatchScheduling();
    m_application = std::make_unique<QGuiApplication>(argc, argv);
    m_program = QFile::encodeName(QCoreApplication::applicationFilePath());
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
    const int status = QGuiApplication::exec();
    if (m_platform->isRestartWanted())
        startAnew();
    boundTheEnd();
    return status;
}

void MeterkinApp::startAnew()
{
    // All of it first: the new program would take the old one's socket for a running instance.
    m_delegate.reset();
    m_platform.reset();
    m_instance.reset();
    m_signals.reset();
    m_application.reset();
    execv(m_program.constData(), m_arguments.data());
    std::perror("meterkin: cannot start anew");
}
