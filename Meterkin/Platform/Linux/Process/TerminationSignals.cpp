#include "Platform/Linux/Process/TerminationSignals.h"

#include <QSocketNotifier>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr std::array signalNumbers{SIGTERM, SIGINT, SIGHUP};
// A signal handler reaches globals only.
int writeEnd = -1;

void forward(int)
{
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = write(writeEnd, &byte, 1);
}

void handleAll(void (*handler)(int))
{
    struct sigaction action { };
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int number : signalNumbers)
        sigaction(number, &action, nullptr);
}

} // namespace

TerminationSignals::TerminationSignals(QObject *parent)
    : QObject(parent)
{
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    m_readEnd = ends[0];
    writeEnd = ends[1];
    auto *notifier = new QSocketNotifier(m_readEnd, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
        notifier->setEnabled(false);
        // A second signal ends the program at once, in case the regular end hangs.
        handleAll(SIG_DFL);
        emit received();
    });
    handleAll(forward);
    // The reader of our output may be gone, which is no reason to end.
    std::signal(SIGPIPE, SIG_IGN);
}

TerminationSignals::~TerminationSignals()
{
    if (m_readEnd < 0)
        return;
    handleAll(SIG_DFL);
    close(m_readEnd);
    close(std::exchange(writeEnd, -1));
}
