#include "Fakes/FakeMach.h"

#include "Fakes/CallLog.h"

#include <algorithm>
#include <cstdlib>

namespace {

constexpr mach_port_t HostPortName = 101;
constexpr mach_port_t TaskPortName = 77;

} // namespace

mach_port_t mach_task_self_ = TaskPortName;
vm_size_t vm_page_size = 16384;

FakeMach &FakeMach::kernel()
{
    static FakeMach fake;
    return fake;
}

mach_port_t mach_host_self()
{
    ++FakeMach::kernel().hostReferences;
    return HostPortName;
}

kern_return_t mach_port_deallocate(ipc_space_t task, mach_port_name_t name)
{
    if (task == TaskPortName && name == HostPortName)
        --FakeMach::kernel().hostReferences;
    return KERN_SUCCESS;
}

kern_return_t host_processor_info(host_t host, processor_flavor_t flavor, natural_t *coreCount,
                                  processor_info_array_t *words, mach_msg_type_number_t *wordCount)
{
    const FakeMach &kernel = FakeMach::kernel();
    CallLog::note(QString::asprintf("host_processor_info %u %d", host, flavor));
    if (kernel.status != KERN_SUCCESS)
        return kernel.status;
    *coreCount = kernel.coreCount;
    *words = nullptr;
    *wordCount = 0;
    if (!kernel.givesArray)
        return KERN_SUCCESS;
    // Exactly as large as told, so that the sanitizer sees a word read beyond.
    *words = static_cast<integer_t *>(std::malloc(kernel.ticks.size() * sizeof(integer_t)));
    *wordCount = static_cast<mach_msg_type_number_t>(kernel.ticks.size());
    std::copy(kernel.ticks.begin(), kernel.ticks.end(), *words);
    return KERN_SUCCESS;
}

kern_return_t vm_deallocate(vm_map_t task, vm_address_t address, vm_size_t size)
{
    CallLog::note(QString::asprintf("vm_deallocate %u %zu", task, size));
    std::free(reinterpret_cast<void *>(address));
    return KERN_SUCCESS;
}

kern_return_t host_statistics64(host_t host, host_flavor_t flavor, host_info64_t words,
                                mach_msg_type_number_t *wordCount)
{
    const FakeMach &kernel = FakeMach::kernel();
    const bool isZero = std::all_of(words, words + *wordCount, [](integer_t w) { return w == 0; });
    CallLog::note(QString::asprintf("host_statistics64 %u %d %u%s", host, flavor, *wordCount,
                                    isZero ? "" : " dirty"));
    if (kernel.status != KERN_SUCCESS)
        return kernel.status;
    *wordCount = std::min(*wordCount, static_cast<mach_msg_type_number_t>(kernel.pageWords.size()));
    std::copy_n(kernel.pageWords.begin(), *wordCount, words);
    return KERN_SUCCESS;
}
