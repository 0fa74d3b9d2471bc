#include "Platform/Linux/Windows/Sway.h"

#include "Platform/Linux/Storage/Descriptor.h"

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QScreen>

#include <array>
#include <cstdint>
#include <cstring>

#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>

// The protocol and its JSON are in the manual page sway-ipc(7).

namespace {

constexpr timeval SwayTimeout{0, 200'000}; // for each step
constexpr std::array<char, 6> Magic{'i', '3', '-', 'i', 'p', 'c'};
constexpr std::uint32_t GetWorkspaces = 1;
constexpr std::uint32_t MostBytes = 1U << 20;

struct [[gnu::packed]] Header {
    std::array<char, Magic.size()> magic = Magic;
    std::uint32_t size = 0; ///< of what follows
    std::uint32_t type = 0;
};

Descriptor connectToSway()
{
    const QByteArray path = qgetenv("SWAYSOCK");
    sockaddr_un address{AF_UNIX, {}};
    if (path.isEmpty() || path.size() >= static_cast<qsizetype>(sizeof address.sun_path))
        return Descriptor(-1);
    std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
    Descriptor sway(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    setsockopt(sway.number(), SOL_SOCKET, SO_RCVTIMEO, &SwayTimeout, sizeof SwayTimeout);
    setsockopt(sway.number(), SOL_SOCKET, SO_SNDTIMEO, &SwayTimeout, sizeof SwayTimeout);
    const bool isConnected =
        connect(sway.number(), reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0;
    return isConnected ? std::move(sway) : Descriptor(-1);
}

bool receive(const Descriptor &sway, void *bytes, std::size_t size)
{
    return recv(sway.number(), bytes, size, MSG_WAITALL) == static_cast<ssize_t>(size);
}

/// Empty when sway does not answer.
QJsonArray workspaces()
{
    const Descriptor sway = connectToSway();
    const Header request{.type = GetWorkspaces};
    Header answer;
    if (send(sway.number(), &request, sizeof request, MSG_NOSIGNAL) != sizeof request
        || !receive(sway, &answer, sizeof answer) || answer.magic != Magic
        || answer.type != GetWorkspaces || answer.size > MostBytes)
        return {};
    QByteArray text(answer.size, Qt::Uninitialized);
    if (!receive(sway, text.data(), answer.size))
        return {};
    return QJsonDocument::fromJson(text).array();
}

} // namespace

QRect swayFreeGeometry(const QScreen &screen)
{
    for (const QJsonValue workspace : workspaces()) {
        if (!workspace[u"visible"].toBool())
            continue;
        const QJsonValue rect = workspace[u"rect"];
        const QRect free = QRect(rect[u"x"].toInt(), rect[u"y"].toInt(), rect[u"width"].toInt(),
                                 rect[u"height"].toInt())
            & screen.geometry();
        if (!free.isEmpty())
            return free;
    }
    return QRect();
}
