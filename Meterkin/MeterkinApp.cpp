#include "MeterkinApp.h"

#include "AppDelegate.h"
#include "Platform/ProgramHost.h"
#include "Translation.h"

#include <QFile>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>

#include <unistd.h>

namespace {

// A signal handler reaches globals only.
const char *programToRestart = nullptr; // null for none
char *const *argumentsOfRestart = nullptr;

void endNow(int /*signal*/)
{
    if (programToRestart != nullptr)
        execv(programToRestart, argumentsOfRestart);
    _exit(programToRestart == nullptr ? EXIT_SUCCESS : EXIT_FAILURE);
}

/// Qt ends only after its lookups of host names and proxies, which may take minutes. All settings
/// are stored by then.
void limitTimeToEnd()
{
    struct sigaction action { };
    action.sa_handler = endNow;
    action.sa_flags = SA_NODEFER; // a restarted program would inherit the blocked signal
    sigaction(SIGALRM, &action, nullptr);
    alarm(5);
}

} // namespace

MeterkinApp::MeterkinApp(int argc, char **argv)
    : m_arguments(argv, argv + argc + 1)
    , m_qtOptions(ProgramHost::prepare())
    , m_qtArguments(m_arguments)
{
    auto place = m_qtArguments.begin() + std::min(argc, 1); // after the program's name
    for (QByteArray &option : m_qtOptions)
        place = m_qtArguments.insert(place, option.data()) + 1;
    m_qtArgumentCount = static_cast<int>(m_qtArguments.size()) - 1;
    m_application = std::make_unique<QGuiApplication>(m_qtArgumentCount, m_qtArguments.data());
    QGuiApplication::setApplicationName(QStringLiteral("meterkin"));
    QGuiApplication::setDesktopFileName(QStringLiteral("org.meterkin.Meterkin"));
    QGuiApplication::setQuitOnLastWindowClosed(false);
    loadTranslation();
}

MeterkinApp::~MeterkinApp() = default;

int MeterkinApp::run()
{
    m_host = ProgramHost::make();
    const auto showDashboard = [this] {
        if (m_delegate)
            m_delegate->showDashboard();
    };
    const ProgramHost::Claim claim = m_host->claimInstance(showDashboard);
    if (claim != ProgramHost::Claim::First)
        return claim == ProgramHost::Claim::Told ? EXIT_SUCCESS : EXIT_FAILURE;

    m_delegate = std::make_unique<AppDelegate>(m_host->platform());
    m_delegate->applicationDidFinishLaunching();
    const int status = QGuiApplication::exec();
    m_programToRestart = QFile::encodeName(m_host->programToRestart());
    if (!m_programToRestart.isEmpty()) {
        programToRestart = m_programToRestart.constData();
        argumentsOfRestart = m_arguments.data();
    }
    limitTimeToEnd();
    if (programToRestart == nullptr)
        return status;
    restart();
    return EXIT_FAILURE;
}

void MeterkinApp::restart()
{
    // All of it before the restart: the new program would find this one as a running instance.
    m_delegate.reset();
    m_host.reset();
    m_application.reset();
    alarm(0);
    execv(programToRestart, argumentsOfRestart);
    std::perror("meterkin: cannot restart");
}
