#include "Platform/macOS/Sensors/ProcessorTicks.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <span>

namespace {

/// The array that the kernel allocated in our task; released at the end.
class KernelArray {
public:
    KernelArray(processor_info_array_t words, mach_msg_type_number_t count)
        : m_words(words, count)
    {
    }
    ~KernelArray()
    {
        vm_deallocate(mach_task_self(), reinterpret_cast<vm_address_t>(m_words.data()),
                      m_words.size_bytes());
    }
    KernelArray(const KernelArray &) = delete;
    KernelArray &operator=(const KernelArray &) = delete;

    std::span<const integer_t> words() const { return m_words; }

private:
    std::span<integer_t> m_words;
};

std::uint64_t ticks(integer_t counter)
{
    if (counter < 0) {
        std::fputs("Fatal error: negative processor ticks (Meterkin/MacProcessorTicks)\n", stderr);
        std::abort();
    }
    return static_cast<std::uint64_t>(counter);
}

} // namespace

bool MacProcessorTicks::read(std::vector<ProcessorCore> &cores)
{
    natural_t coreCount = 0;
    processor_info_array_t words = nullptr;
    mach_msg_type_number_t wordCount = 0;
    const kern_return_t status =
        host_processor_info(m_host.get(), PROCESSOR_CPU_LOAD_INFO, &coreCount, &words, &wordCount);
    if (status != KERN_SUCCESS || words == nullptr)
        return false;

    const KernelArray array(words, wordCount);
    // The kernel counts cores and words separately: skip cores that have no words.
    coreCount = std::min<natural_t>(coreCount, wordCount / CPU_STATE_MAX);
    cores.clear();
    for (natural_t number = 0; number < coreCount; ++number) {
        const std::span core =
            array.words().subspan(static_cast<std::size_t>(number) * CPU_STATE_MAX, CPU_STATE_MAX);
        cores.push_back({number,
                         {ticks(core[CPU_STATE_USER]), ticks(core[CPU_STATE_SYSTEM]),
                          ticks(core[CPU_STATE_IDLE]), ticks(core[CPU_STATE_NICE])}});
    }
    return true;
}
