#include "Platform/macOS/Sensors/PageCounters.h"

#import <Foundation/Foundation.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>

namespace {

// Newer systems append fields to the structure and never move one, so the headers that we are built
// with may know fewer fields than we ask for, or more.
constexpr mach_msg_type_number_t RequestedWords = 40;
constexpr std::size_t BufferWords =
    std::max<std::size_t>(RequestedWords, sizeof(vm_statistics64) / sizeof(integer_t));
static_assert(sizeof(vm_statistics64) >= 152);
static_assert(offsetof(vm_statistics64, free_count) == 0);
static_assert(offsetof(vm_statistics64, active_count) == 4);
static_assert(offsetof(vm_statistics64, inactive_count) == 8);
static_assert(offsetof(vm_statistics64, wire_count) == 12);
static_assert(offsetof(vm_statistics64, compressor_page_count) == 128);

} // namespace

std::optional<PageCounts> MacPageCounters::read()
{
    alignas(vm_statistics64) std::array<integer_t, BufferWords> buffer{};
    mach_msg_type_number_t count = RequestedWords;
    if (host_statistics64(m_host.get(), HOST_VM_INFO64, buffer.data(), &count) != KERN_SUCCESS)
        return std::nullopt;

    vm_statistics64 statistics;
    std::memcpy(&statistics, buffer.data(), sizeof statistics);
    PageCounts counts;
    counts.pageSize = vm_page_size;
    counts.active = statistics.active_count;
    counts.wired = statistics.wire_count;
    counts.compressed = statistics.compressor_page_count;
    counts.inactive = statistics.inactive_count;
    counts.free = statistics.free_count;
    return counts;
}

std::uint64_t MacPageCounters::physicalMemory()
{
    return NSProcessInfo.processInfo.physicalMemory;
}
