#include "Platform/Linux/Display/Selection.h"

#include "Platform/Linux/Display/X11.h"
#include "Platform/Linux/Storage/Descriptor.h"
#include "Platform/Log.h"

#include <QDir>
#include <QFile>

#include <array>
#include <chrono>
#include <cstdint>
#include <future>
#include <thread>

#include <sys/socket.h>
#include <sys/un.h>

namespace {

using namespace std::chrono_literals;

constexpr auto Timeout = 10s;

bool waylandAnswers()
{
    // The compositor has opened a connection for us, which can be used only once.
    if (qEnvironmentVariableIsSet("WAYLAND_SOCKET"))
        return true;
    const QDir runtime(qEnvironmentVariable("XDG_RUNTIME_DIR"));
    const QByteArray path =
        QFile::encodeName(runtime.absoluteFilePath(qEnvironmentVariable("WAYLAND_DISPLAY")));
    const Descriptor display(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_un address{AF_UNIX, {}};
    qstrncpy(address.sun_path, path.constData(), sizeof address.sun_path);
    if (connect(display.number(), reinterpret_cast<const sockaddr *>(&address), sizeof address)
        != 0)
        return false;
    // The request wl_display.sync of the Wayland protocol (wayland.freedesktop.org): object 1,
    // request 0, 12 bytes; the answer is to the new object 2.
    constexpr std::array<std::uint32_t, 3> sync{1, sizeof sync << 16, 2};
    char byte = 0;
    return send(display.number(), sync.data(), sizeof sync, MSG_NOSIGNAL) == sizeof sync
        && recv(display.number(), &byte, sizeof byte, 0) == sizeof byte;
}

/// False after the timeout; the thread of a question that hangs is left behind.
bool isTrueInTime(bool (*question)())
{
    std::packaged_task<bool()> task(question);
    std::future<bool> answer = task.get_future();
    std::thread(std::move(task)).detach();
    return answer.wait_for(Timeout) == std::future_status::ready && answer.get();
}

bool isUsable(const char *variable, bool (*answers)())
{
    if (qEnvironmentVariableIsEmpty(variable))
        return false;
    const bool isUsable = isTrueInTime(answers);
    qCDebug(logWindows, "%s=%s answers: %d", variable, qgetenv(variable).constData(), isUsable);
    if (!isUsable)
        qunsetenv(variable);
    return isUsable;
}

} // namespace

const char *selectDisplay()
{
    const bool hasX11 = isUsable("DISPLAY", x11Answers);
    const bool hasWayland = isUsable("WAYLAND_DISPLAY", waylandAnswers);
    if (hasX11)
        return hasWayland ? "xcb;wayland" : "xcb";
    return hasWayland ? "wayland" : nullptr;
}
