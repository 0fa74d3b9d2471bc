#include "Platform/Linux/LinuxHost.h"

#include "Platform/Linux/BatchScheduling.h"
#include "Platform/Linux/BusSelection.h"
#include "Platform/Linux/DisplaySelection.h"

#include <QGuiApplication>
#include <QSessionManager>

#include <cstdio>
#include <cstdlib>
#include <utility>

QByteArrayList ProgramHost::prepare()
{
    const char *platform = selectDisplay();
    if (platform == nullptr) {
        std::fputs("meterkin: no display: start it inside a desktop session\n", stderr);
        std::exit(EXIT_FAILURE);
    }
    useBatchScheduling();
    selectBus();
    // Not through the environment, which the programs that we start would inherit. A desktop's
    // theme plugins would pull whole toolkits into the process.
    return {"-platform", platform, "-platformtheme", "generic"};
}

std::unique_ptr<ProgramHost> ProgramHost::make()
{
    return std::make_unique<LinuxHost>();
}

LinuxHost::LinuxHost()
{
    QObject::connect(&m_signals, &TerminationSignals::received, qGuiApp, &QCoreApplication::quit);
    // The autostart entry brings us back after a login, not the session's memory.
    QObject::connect(
        qGuiApp, &QGuiApplication::saveStateRequest, qGuiApp,
        [](QSessionManager &session) { session.setRestartHint(QSessionManager::RestartNever); });
}

LinuxHost::~LinuxHost()
{
    useOriginalScheduling(); // what comes now may be a restart
}

bool LinuxHost::isFirstInstance(std::function<void()> startedAgain)
{
    QObject::connect(&m_instance, &SingleInstance::startedAgain, std::move(startedAgain));
    return m_instance.claim();
}

Platform &LinuxHost::platform()
{
    if (!m_platform)
        m_platform = std::make_unique<LinuxPlatform>();
    return *m_platform;
}
