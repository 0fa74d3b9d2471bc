#include "Platform/Linux/BusSelection.h"

#include "Platform/Linux/BusGreeting.h"
#include "Platform/Linux/MessageBus.h"

namespace {

constexpr int Milliseconds = 5'000; // what starts together with us at login has its time

} // namespace

void selectBus()
{
    const QString address = MessageBus::address(MessageBus::Kind::Session);
    // An address of no known kind; without any, the kit would look for a bus by itself.
    if (!address.isEmpty() && greetBus(address, Milliseconds) == BusState::Silent)
        qputenv("DBUS_SESSION_BUS_ADDRESS", QByteArrayLiteral("silent:"));
}
