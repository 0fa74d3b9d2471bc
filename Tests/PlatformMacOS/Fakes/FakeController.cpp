#include "Fakes/FakeController.h"

#include "Fakes/CallLog.h"

#include <IOKit/IOKitLib.h>

#include <algorithm>
#include <cstring>

namespace {

constexpr io_service_t Service = 55;
constexpr io_connect_t Connection = 99;

using Record = std::array<std::uint8_t, 80>;

std::uint32_t wordAt(const Record &record, std::size_t offset)
{
    std::uint32_t word = 0;
    std::memcpy(&word, record.data() + offset, sizeof word);
    return word;
}

bool isZero(const Record &record, std::size_t begin, std::size_t end)
{
    return std::all_of(record.begin() + begin, record.begin() + end,
                       [](std::uint8_t byte) { return byte == 0; });
}

/// In a record a text of four characters comes last character first.
std::string textAt(const Record &record, std::size_t offset)
{
    return {record.rend() - static_cast<std::ptrdiff_t>(offset) - 4,
            record.rend() - static_cast<std::ptrdiff_t>(offset)};
}

} // namespace

const mach_port_t kIOMainPortDefault = 12;

FakeController &FakeController::driver()
{
    static FakeController fake;
    return fake;
}

CFMutableDictionaryRef IOServiceMatching(const char *name)
{
    CallLog::note(QStringLiteral("IOServiceMatching ") + QString::fromUtf8(name));
    static char dictionary;
    return FakeController::driver().hasDictionary
        ? reinterpret_cast<CFMutableDictionaryRef>(&dictionary)
        : nullptr;
}

io_service_t IOServiceGetMatchingService(mach_port_t mainPort, CFDictionaryRef matching)
{
    CallLog::note(QString::asprintf("IOServiceGetMatchingService %u%s", mainPort,
                                    matching != nullptr ? "" : " null"));
    return FakeController::driver().hasService ? Service : IO_OBJECT_NULL;
}

kern_return_t IOServiceOpen(io_service_t service, task_port_t task, uint32_t type,
                            io_connect_t *connection)
{
    CallLog::note(QString::asprintf("IOServiceOpen %u %u %u", service, task, type));
    *connection = Connection;
    return FakeController::driver().openStatus;
}

kern_return_t IOServiceClose(io_connect_t connection)
{
    CallLog::note(QString::asprintf("IOServiceClose %u", connection));
    return KERN_SUCCESS;
}

kern_return_t IOObjectRelease(io_object_t object)
{
    CallLog::note(QString::asprintf("IOObjectRelease %u", object));
    return KERN_SUCCESS;
}

kern_return_t IOConnectCallStructMethod(mach_port_t connection, uint32_t selector,
                                        const void *input, size_t inputSize, void *output,
                                        size_t *outputSize)
{
    Record request{};
    std::memcpy(request.data(), input, std::min(inputSize, request.size()));
    const std::string name = textAt(request, 0);
    const std::uint32_t size = wordAt(request, 28);
    const std::uint8_t command = request[42];
    CallLog::note(QString::asprintf("call %u %u %zu %zu: %s %u %u", connection, selector, inputSize,
                                    *outputSize, name.c_str(), command, size));

    const std::lock_guard lock(FakeController::mutex);
    const FakeController &driver = FakeController::driver();
    const auto key = driver.keys.find(name);
    const bool isClean =
        isZero(request, 4, 28) && isZero(request, 32, 42) && isZero(request, 43, 80);
    if (command == driver.refusedCommand || !isClean || key == driver.keys.end()) {
        std::memset(output, 0xEE, sizeof(Record));
        return KERN_INVALID_ARGUMENT;
    }
    Record reply{};
    if (command == 9) {
        std::memcpy(reply.data() + 28, &key->second.size, 4);
        std::copy(key->second.type.rbegin(), key->second.type.rend(), reply.begin() + 32);
    } else if (command == 5 && size == key->second.size) {
        std::copy(key->second.bytes.begin(), key->second.bytes.end(), reply.begin() + 48);
    } else {
        return KERN_INVALID_ARGUMENT;
    }
    std::memcpy(output, reply.data(), reply.size());
    return KERN_SUCCESS;
}
