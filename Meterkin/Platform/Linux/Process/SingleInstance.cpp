#include "Platform/Linux/Process/SingleInstance.h"

#include "Platform/Linux/Display/X11.h"
#include "Platform/Linux/Process/ProgramLocation.h"
#include "Platform/Log.h"
#include "PluginIdentifier.h"

#include <QByteArrayList>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QSocketNotifier>
#include <QStandardPaths>
#include <QSysInfo>
#include <QTimer>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <thread>

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

namespace {

using namespace std::chrono_literals;

constexpr auto AnswerTimeout = 5s;
constexpr auto RetryInterval = 50ms;
constexpr auto AcceptRetryInterval = 1s;
constexpr const char *SocketName = "socket";
constexpr std::size_t LongestMessage = 8192;
constexpr char Separator = '\0'; // between the build and the program's path
const QByteArray Build = QByteArrayLiteral(METERKIN_BUILD);

QByteArray displayName()
{
    if (const std::optional<QByteArray> name = x11DisplayName())
        return *name;
    const QDir runtime(qEnvironmentVariable("XDG_RUNTIME_DIR"));
    return QFile::encodeName(runtime.absoluteFilePath(qEnvironmentVariable("WAYLAND_DISPLAY")));
}

/// Not open unless the folder is this user's and nobody else may write to it.
Descriptor openOurs(int parent, const QByteArray &path, int flags = 0)
{
    Descriptor folder(openat(parent, path.constData(), O_PATH | O_DIRECTORY | O_CLOEXEC | flags));
    struct stat status { };
    const bool isOurs = fstat(folder.number(), &status) == 0 && status.st_uid == geteuid()
        && (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
    return isOurs ? std::move(folder) : Descriptor(-1);
}

Descriptor makeFolder(const Descriptor &parent, QByteArray name)
{
    name.replace('/', '_');
    mkdirat(parent.number(), name.constData(), S_IRWXU);
    return openOurs(parent.number(), name, O_NOFOLLOW);
}

/// Not open when there is no place for one.
Descriptor openInstanceFolder()
{
    // The second for a start without a session of its own, as by su or cron.
    for (const QByteArray &path :
         {qgetenv("XDG_RUNTIME_DIR"), "/run/user/" + QByteArray::number(geteuid())}) {
        const Descriptor runtime = openOurs(path.startsWith('/') ? AT_FDCWD : -1, path);
        Descriptor folder = makeFolder(runtime, "meterkin" + displayName());
        if (folder.isOpen())
            return folder;
    }
    // Machines may share a home folder, and each has displays of its own.
    const QString settings = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + QStringLiteral("/meterkin");
    QDir().mkpath(settings);
    const Descriptor folder(
        open(QFile::encodeName(settings).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    return makeFolder(folder, QSysInfo::machineHostName().toLocal8Bit() + displayName());
}

Descriptor makeSocket()
{
    return Descriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
}

/// By the folder's descriptor, because its path may be too long for an address, or be replaced.
sockaddr_un addressIn(const Descriptor &folder)
{
    sockaddr_un address{AF_UNIX, {}};
    std::snprintf(address.sun_path, sizeof address.sun_path, "/proc/self/fd/%d/%s", folder.number(),
                  SocketName);
    return address;
}

bool isPeerThisUser(const Descriptor &socket)
{
    ucred peer{};
    socklen_t size = sizeof peer;
    return getsockopt(socket.number(), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0
        && peer.uid == geteuid();
}

/// What can be read at once, empty for nothing: messages are too short to come in parts.
QByteArray receive(const Descriptor &socket)
{
    std::array<char, LongestMessage> message;
    const ssize_t size = recv(socket.number(), message.data(), message.size(), MSG_DONTWAIT);
    return {message.data(), std::max<ssize_t>(size, 0)};
}

void send(const Descriptor &socket, const QByteArray &message)
{
    ::send(socket.number(), message.constData(), static_cast<std::size_t>(message.size()),
           MSG_NOSIGNAL);
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
            qCWarning(logStorage, "no folder to lock: other instances go unnoticed");
            return ProgramHost::Claim::First;
        }
        // The other instance may be just starting or ending.
        if (tellFirst(deadline))
            return ProgramHost::Claim::Told;
        if (deadline.hasExpired())
            return ProgramHost::Claim::Unanswered;
        std::this_thread::sleep_for(RetryInterval);
    }
    if (!listen())
        qCWarning(logStorage, "cannot listen: %s; further starts get no answer",
                  std::strerror(errno));
    return ProgramHost::Claim::First;
}

/// Whether the first instance was told of this start and answered in time.
bool SingleInstance::tellFirst(const QDeadlineTimer &deadline)
{
    const Descriptor socket = makeSocket();
    const sockaddr_un address = addressIn(m_folder);
    if (::connect(socket.number(), reinterpret_cast<const sockaddr *>(&address), sizeof address)
            != 0
        || !isPeerThisUser(socket))
        return false;
    send(socket, Build + Separator + QFile::encodeName(programToStart()));
    pollfd answer{socket.number(), POLLIN, 0};
    if (poll(&answer, 1, static_cast<int>(deadline.remainingTime())) != 1)
        return false;
    const QByteArray build = receive(socket);
    if (build != Build)
        m_otherBuild = build;
    return !build.isEmpty();
}

bool SingleInstance::listen()
{
    // We hold the lock, so a socket is that of an instance that was killed.
    unlinkat(m_folder.number(), SocketName, 0);
    m_socket = makeSocket();
    const sockaddr_un address = addressIn(m_folder);
    if (bind(m_socket.number(), reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0
        || ::listen(m_socket.number(), SOMAXCONN) != 0)
        return false;
    m_notifier = std::make_unique<QSocketNotifier>(m_socket.number(), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &SingleInstance::takeStart);
    return true;
}

void SingleInstance::takeStart()
{
    auto peer = std::make_shared<Descriptor>(
        accept4(m_socket.number(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    if (!peer->isOpen()) {
        // Out of descriptors, for instance: the other start waits, and must not keep us busy.
        m_notifier->setEnabled(false);
        QTimer::singleShot(AcceptRetryInterval, m_notifier.get(),
                           [this] { m_notifier->setEnabled(true); });
        return;
    }
    if (!isPeerThisUser(*peer))
        return;
    auto *message = new QSocketNotifier(peer->number(), QSocketNotifier::Read, m_notifier.get());
    connect(message, &QSocketNotifier::activated, this, [this, peer, message] {
        message->setEnabled(false);
        message->deleteLater();
        answer(*peer);
    });
    QTimer::singleShot(AnswerTimeout, message, &QObject::deleteLater); // it never said anything
}

void SingleInstance::answer(const Descriptor &peer)
{
    const QByteArrayList message = receive(peer).split(Separator);
    emit startedAgain();
    if (message.size() == 2 && message[0] != Build)
        emit otherBuildStarted(QFile::decodeName(message[1]));
    send(peer, Build);
}
