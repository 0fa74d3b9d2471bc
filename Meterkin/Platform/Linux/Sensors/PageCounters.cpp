#include "Platform/Linux/Sensors/PageCounters.h"

#include "Platform/Linux/Sensors/MeminfoLines.h"
#include "Platform/Linux/Sensors/NumberText.h"

#include <QDir>

#include <unistd.h>

namespace {

/// Third number of a device's mm_stat: bytes of memory in use, with the overhead of the allocator.
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
    const std::optional<MeminfoLines> lines = text ? MeminfoLines::parse(*text) : std::nullopt;
    if (!lines)
        return std::nullopt;

    // Such a device comes and goes as swap space; listing the folder each time costs more than all
    // the rest of a sample.
    if (!m_hasSoughtDevices || lines->swapTotal != m_swapTotal) {
        m_hasSoughtDevices = true;
        m_swapTotal = lines->swapTotal;
        findZramDevices();
    }
    return lines->pageCounts(zramHeld());
}

std::uint64_t LinuxPageCounters::physicalMemory()
{
    const std::optional<std::string_view> text = m_file.read();
    const std::optional<MeminfoLines> lines = text ? MeminfoLines::parse(*text) : std::nullopt;
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

std::uint64_t LinuxPageCounters::zramHeld()
{
    constexpr std::uint64_t Limit = std::uint64_t{1} << 60;
    std::uint64_t sum = 0;
    for (KernelFile &device : m_zramDevices) {
        const std::optional<std::string_view> text = device.read();
        const std::optional<std::uint64_t> held = text ? heldBytes(*text) : std::nullopt;
        sum = std::min(Limit, sum + std::min(Limit, held.value_or(0)));
    }
    return sum;
}
