#include "Platform/macOS/Sensors/SMCUserClient.h"

#include <IOKit/IOKitLib.h>

namespace {

constexpr std::uint32_t KeyDataSelector = 2;

} // namespace

bool SMCUserClient::open()
{
    const CFMutableDictionaryRef matching = IOServiceMatching("AppleSMC");
    if (matching == nullptr)
        return false;
    const io_service_t service = IOServiceGetMatchingService(kIOMainPortDefault, matching);
    if (service == IO_OBJECT_NULL)
        return false;
    const kern_return_t status = IOServiceOpen(service, mach_task_self(), 0, &m_connection);
    IOObjectRelease(service);
    return status == KERN_SUCCESS;
}

bool SMCUserClient::call(const ControllerRecord &request, ControllerRecord &reply)
{
    // A driver that fails may have written part of its answer.
    ControllerRecord answer = reply;
    std::size_t size = sizeof answer;
    if (IOConnectCallStructMethod(m_connection, KeyDataSelector, &request, sizeof request, &answer,
                                  &size)
        != KERN_SUCCESS)
        return false;
    reply = answer;
    return true;
}

void SMCUserClient::close()
{
    IOServiceClose(m_connection);
}
