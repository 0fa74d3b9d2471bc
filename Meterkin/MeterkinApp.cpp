#include "MeterkinApp.h"

#include "AppDelegate.h"
#include "Platform/ProgramHost.h"

#include <QFile>
#include <QQuickWindow>

#include <algorithm>
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
    m_program = QFile::encodeName(QCoreApplication::applicationFilePath());
    QGuiApplication::setApplicationName(QStringLiteral("meterkin"));
    QGuiApplication::setDesktopFileName(QStringLiteral("org.meterkin.Meterkin"));
    QGuiApplication::setQuitOnLastWindowClosed(false);
    // What changes once in seconds needs no graphics processor, whose driver costs more than it
    // all.
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
}

MeterkinApp::~MeterkinApp() = default;

int MeterkinApp::run()
{
    m_host = ProgramHost::make();
    const auto showDashboard = [this] {
        if (m_delegate)
            m_delegate->showDashboard();
    };
    if (!m_host->isFirstInstance(showDashboard))
        return EXIT_SUCCESS;

    m_delegate = std::make_unique<AppDelegate>(m_host->platform());
    m_delegate->applicationDidFinishLaunching();
    const int status = QGuiApplication::exec();
    if (m_host->isRestartWanted())
        startAnew();
    boundTheEnd();
    return status;
}

void MeterkinApp::startAnew()
{
    // All of it first: the new program would take the old one's socket for a running instance.
    m_delegate.reset();
    m_host.reset();
    m_application.reset();
    execv(m_program.constData(), m_arguments.data());
    std::perror("meterkin: cannot start anew");
}
