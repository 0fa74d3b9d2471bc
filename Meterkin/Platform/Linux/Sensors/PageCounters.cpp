#include "Platform/Linux/Sensors/PageCounters.h"

#include "Platform/Linux/Sensors/NumberText.h"

#include <QDir>

#include <unistd.h>

namespace {

/// The third number of mm_stat, mem_used_total: bytes, with the overhead of the allocator.
/// https://docs.kernel.org/admin-guide/blockdev/zram.html
std::optional<std::uint64_t> heldBytes(std::string_view text)
{
    std::optional<std::string_view> line = takeLine(text);
    if (!line || !takeNumber(*line) || !takeNumber(*line))
        return std::nullopt;
    return takeNumber(*line);
}

} // namespace

LinuxPageCounters::LinuxPageCounters(std::string path, std::string blockFolder)
    : m_blockFolder(std::move(blockFolder))
    , m_file(std::move(path))
{
}

std::optional<PageCounts> LinuxPageCounters::read()
{
    const std::optional<std::string_view> text = m_file.read();
    const std::optional<MeminfoLines> lines = text ? m_parser.parse(*text) : std::nullopt;
    const std::optional<PageCounts> counts =
        lines ? lines->pageCounts(zramHeld(*lines)) : std::nullopt;
    if (!counts)
        m_file.warnOnce("there is no reading of the memory until it can be used");
    return counts;
}

std::uint64_t LinuxPageCounters::physicalMemory()
{
    const std::optional<std::string_view> text = m_file.read();
    const std::optional<MeminfoLines> lines = text ? m_parser.parse(*text) : std::nullopt;
    if (lines && lines->total)
        return *lines->total * 1024;
    const long pages = sysconf(_SC_PHYS_PAGES);
    const long pageSize = sysconf(_SC_PAGESIZE);
    if (pages <= 0 || pageSize <= 0)
        return 0;
    return static_cast<std::uint64_t>(pages) * static_cast<std::uint64_t>(pageSize);
}

void LinuxPageCounters::findZramDevices()
{
    m_zramDevices.clear();
    const QDir folder(QString::fromStdString(m_blockFolder));
    for (const QString &device : folder.entryList({QStringLiteral("zram*")}, QDir::Dirs))
        m_zramDevices.emplace_back(m_blockFolder + '/' + device.toStdString() + "/mm_stat");
}

std::uint64_t LinuxPageCounters::zramHeld(const MeminfoLines &lines)
{
    // Listing the folder costs more than the rest of a sample. These devices are swap space, which
    // changes when one is added or removed.
    if (!m_hasFoundDevices || lines.swapTotal != m_swapTotal) {
        m_hasFoundDevices = true;
        m_swapTotal = lines.swapTotal;
        findZramDevices();
    }
    if (lines.swapTotal == 0)
        return 0; // none of them is in use
    constexpr std::uint64_t Limit = std::uint64_t{1} << 60;
    std::uint64_t sum = 0;
    for (KernelFile &device : m_zramDevices) {
        const std::optional<std::string_view> text = device.read();
        const std::optional<std::uint64_t> held = text ? heldBytes(*text) : std::nullopt;
        sum = std::min(Limit, sum + std::min(Limit, held.value_or(0)));
    }
    return sum;
}
