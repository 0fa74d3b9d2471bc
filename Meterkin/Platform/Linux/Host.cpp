#include "Platform/Linux/Host.h"

#include "Platform/Linux/BatchScheduling.h"
#include "Platform/Linux/DisplaySelection.h"
#include "Platform/Linux/Exhaustion.h"
#include "Platform/Linux/QtMessages.h"
#include "Platform/Linux/Storage/SettingsOwner.h"

#include <QGuiApplication>
#include <QSessionManager>

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace {

[[noreturn]] void refuse(const char *reason)
{
    std::fprintf(stderr, "meterkin: %s\n", reason);
    std::exit(EXIT_FAILURE);
}

} // namespace

QByteArrayList ProgramHost::prepare()
{
    endWhenExhausted();
    if (const char *lack = lackingResource())
        refuse(lack);
    if (wouldTakeSettingsOver())
        refuse("root would take the user's settings over: start it as that user");
    const char *platforms = selectDisplay();
    if (platforms == nullptr)
        refuse("no display: start it inside a desktop session");
    useBatchScheduling();
    BusConnection::keepQtFromSilentBus();
    qInstallMessageHandler(handleQtMessage);
    // Not through the environment, which the programs that we start would inherit. A desktop's
    // theme plugins would pull whole toolkits into the process.
    return {"-platform", platforms, "-platformtheme", "generic"};
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

ProgramHost::Claim LinuxHost::claimInstance(std::function<void()> startedAgain)
{
    QObject::connect(&m_instance, &SingleInstance::startedAgain, std::move(startedAgain));
    const Claim claim = m_instance.claim();
    if (claim == Claim::Unanswered)
        std::fputs("meterkin: it is running already, and does not answer\n", stderr);
    return claim;
}

Platform &LinuxHost::platform()
{
    if (!m_platform)
        m_platform = std::make_unique<LinuxPlatform>();
    return *m_platform;
}
