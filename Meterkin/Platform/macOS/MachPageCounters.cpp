#include "Platform/macOS/MachPageCounters.h"

#include "Platform/macOS/PhysicalMemory.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>

namespace {

// Newer systems append fields: the structure of the headers may be smaller or larger than what we
// ask for, but never lose what we read.
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

std::optional<PageCounts> MachPageCounters::read()
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

std::uint64_t MachPageCounters::physicalMemory()
{
    return ::physicalMemory();
}
