#include "Platform/Linux/Bus/Selection.h"

#include "Platform/Linux/Bus/Handshake.h"
#include "Platform/Linux/Bus/Connection.h"

namespace {

constexpr int Milliseconds = 5'000; // what starts together with us at login has its time
constexpr const char *Variable = "DBUS_SESSION_BUS_ADDRESS";

} // namespace

void selectBus()
{
    const QString address = BusConnection::address(BusConnection::Kind::Session);
    if (address.isEmpty() || greetBus(address, Milliseconds) != BusState::Silent)
        return;
    // Qt takes the address from the environment, once, and keeps what it got. An address of no
    // known kind: without any, it would look for a bus by itself. The programs that we start
    // inherit the environment as it was.
    const bool isSet = qEnvironmentVariableIsSet(Variable);
    const QByteArray original = qgetenv(Variable);
    qputenv(Variable, QByteArrayLiteral("silent:"));
    static_cast<void>(QDBusConnection::sessionBus());
    if (isSet)
        qputenv(Variable, original);
    else
        qunsetenv(Variable);
}
