#include "Platform/Linux/SingleInstance.h"

#include "Platform/Linux/InstanceFolder.h"

#include <QDeadlineTimer>
#include <QSocketNotifier>

#include <QTimer>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <thread>

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/un.h>

namespace {

using namespace std::chrono_literals;

constexpr auto AnswerTimeout = 5s;
constexpr auto RetryInterval = 50ms;
constexpr auto AcceptRetryInterval = 1s;
constexpr const char *SocketName = "socket";

Descriptor makeSocket()
{
    return Descriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
}

/// By the folder's descriptor: its path may be longer than an address holds, or be swapped.
sockaddr_un addressIn(const Descriptor &folder)
{
    sockaddr_un address{AF_UNIX, {}};
    std::snprintf(address.sun_path, sizeof address.sun_path, "/proc/self/fd/%d/%s", folder.number(),
                  SocketName);
    return address;
}

bool isPeerOurs(const Descriptor &socket)
{
    ucred peer{};
    socklen_t size = sizeof peer;
    return getsockopt(socket.number(), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0
        && peer.uid == geteuid();
}

/// Whether the first instance has been told of this start, and has answered in time.
bool tellFirst(const Descriptor &folder, const QDeadlineTimer &deadline)
{
    const Descriptor socket = makeSocket();
    const sockaddr_un address = addressIn(folder);
    if (connect(socket.number(), reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0
        || !isPeerOurs(socket))
        return false;
    pollfd answer{socket.number(), POLLIN, 0};
    char byte = 0;
    return poll(&answer, 1, static_cast<int>(deadline.remainingTime())) == 1
        && recv(socket.number(), &byte, sizeof byte, 0) == sizeof byte;
}

} // namespace

SingleInstance::SingleInstance(QObject *parent)
    : QObject(parent)
{
}

SingleInstance::~SingleInstance()
{
    if (m_notifier)
        unlinkat(m_folder.number(), SocketName, 0);
}

ProgramHost::Claim SingleInstance::claim()
{
    m_folder = openInstanceFolder();
    m_lock = Descriptor(openat(m_folder.number(), "lock",
                               O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC,
                               S_IRUSR | S_IWUSR));
    const QDeadlineTimer deadline(AnswerTimeout);
    while (flock(m_lock.number(), LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK) {
            std::fputs("meterkin: no folder to lock: other instances go unnoticed\n", stderr);
            return ProgramHost::Claim::First;
        }
        // It may be just starting, or ending.
        if (tellFirst(m_folder, deadline))
            return ProgramHost::Claim::Told;
        if (deadline.hasExpired())
            return ProgramHost::Claim::Unanswered;
        std::this_thread::sleep_for(RetryInterval);
    }
    if (!listen())
        std::fprintf(stderr, "meterkin: cannot listen: further starts go unanswered: %s\n",
                     std::strerror(errno));
    return ProgramHost::Claim::First;
}

bool SingleInstance::listen()
{
    // Whose socket it is has ended without removing it: the lock is ours.
    unlinkat(m_folder.number(), SocketName, 0);
    m_socket = makeSocket();
    const sockaddr_un address = addressIn(m_folder);
    if (bind(m_socket.number(), reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0
        || ::listen(m_socket.number(), SOMAXCONN) != 0)
        return false;
    m_notifier = std::make_unique<QSocketNotifier>(m_socket.number(), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &SingleInstance::answer);
    return true;
}

void SingleInstance::answer()
{
    const Descriptor peer(
        accept4(m_socket.number(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    if (!peer.isOpen()) {
        // Out of descriptors, say: the start keeps waiting, and must not keep us busy.
        m_notifier->setEnabled(false);
        QTimer::singleShot(AcceptRetryInterval, m_notifier.get(),
                           [this] { m_notifier->setEnabled(true); });
        return;
    }
    if (!isPeerOurs(peer))
        return;
    emit startedAgain();
    const char byte = 1;
    send(peer.number(), &byte, sizeof byte, MSG_NOSIGNAL);
}
