#include "Platform/Linux/Host.h"

#include "Platform/Linux/Display/Selection.h"
#include "Platform/Linux/Process/Exhaustion.h"
#include "Platform/Linux/Process/Memory.h"
#include "Platform/Linux/Process/Surroundings.h"

#include <QGuiApplication>
#include <QSessionManager>
#include <QString>
#include <QTimer>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include <unistd.h>

namespace {

using namespace std::chrono_literals;

// By then the title is in its place, and shows its first readings.
constexpr auto StartDuration = 5s;

[[noreturn]] void refuse(const char *reason)
{
    std::fprintf(stderr, "meterkin: %s\n", reason);
    std::exit(EXIT_FAILURE);
}

/// Writes to standard error. Where Qt would abort, or would wait forever, the program ends with
/// one line and status 1. Any thread.
void handleQtMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    // Qt reports a thread that it cannot start in no other way, and waits for it.
    if (type == QtFatalMsg || text.startsWith(u"QThread::start: Thread creation error")) {
        // The first line: for a platform plugin QT_DEBUG_PLUGINS=1 tells more.
        std::fprintf(stderr, "meterkin: %s\n", qPrintable(text.section(u'\n', 0, 0)));
        _exit(EXIT_FAILURE);
    }
    // A warning about a plugin that Qt tries and passes over would look like a failure.
    if (type == QtDebugMsg || qstrcmp(context.category, "qt.qpa.plugin") != 0)
        std::fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, text)));
}

} // namespace

QByteArrayList ProgramHost::prepare()
{
    useLittleMemory();
    endWhenExhausted();
    if (const char *lack = lackingResource())
        refuse(lack);
    if (LinuxDefaultsStore::wouldTakeSettingsOver())
        refuse("root would take the user's settings over: start it as that user");
    const char *platforms = selectDisplay();
    if (platforms == nullptr)
        refuse("no display: start it inside a desktop session");
    useOwnSurroundings();
    BusConnection::keepQtFromSilentBus();
    qInstallMessageHandler(handleQtMessage);
    // As options, because programs that we start would inherit environment variables. The theme
    // plugins of desktops would load whole toolkits.
    return {"-platform", platforms, "-platformtheme", "generic"};
}

std::unique_ptr<ProgramHost> ProgramHost::make()
{
    return std::make_unique<LinuxHost>();
}

LinuxHost::LinuxHost()
{
    QTimer::singleShot(StartDuration, qGuiApp, giveMemoryBackSoon);
    QObject::connect(&m_signals, &TerminationSignals::received, qGuiApp, &QCoreApplication::quit);
    // The autostart entry starts the program at login; the session manager must not do it too.
    QObject::connect(
        qGuiApp, &QGuiApplication::saveStateRequest, qGuiApp,
        [](QSessionManager &session) { session.setRestartHint(QSessionManager::RestartNever); });
}

LinuxHost::~LinuxHost()
{
    useOriginalSurroundings(); // a restarted program would inherit ours
}

ProgramHost::Claim LinuxHost::claimInstance(std::function<void()> startedAgain)
{
    QObject::connect(&m_instance, &SingleInstance::startedAgain, std::move(startedAgain));
    QObject::connect(&m_instance, &SingleInstance::otherBuildStarted, qGuiApp,
                     [this](const QString &program) {
                         if (m_platform)
                             m_platform->offerRestart(program);
                     });
    const Claim claim = m_instance.claim();
    if (const QByteArray &build = m_instance.otherBuild(); !build.isEmpty())
        std::fprintf(stderr, "meterkin: version %s is running, and offers to restart as this one\n",
                     build.constData());
    if (claim == Claim::Unanswered)
        std::fputs("meterkin: it is running already, and does not answer\n", stderr);
    return claim;
}

QString LinuxHost::programToRestart() const
{
    return m_platform ? m_platform->programToRestart() : QString();
}

Platform &LinuxHost::platform()
{
    if (!m_platform)
        m_platform = std::make_unique<LinuxPlatform>();
    return *m_platform;
}
