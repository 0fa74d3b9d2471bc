#include "Platform/Linux/Sensors/HwmonFans.h"

#include "Platform/FourCharacterCode.h"
#include "Platform/Linux/Sensors/NumberText.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <bit>
#include <filesystem>
#include <span>
#include <string_view>
#include <tuple>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr std::size_t MostFans = 255; // the count is one byte
constexpr std::chrono::seconds LookInterval{5};
constexpr std::uint32_t CountKey = fourCharacterCode("FNum");
constexpr std::uint32_t ByteType = fourCharacterCode("ui8 ");
constexpr std::uint32_t FloatType = fourCharacterCode("flt ");

/// What fits of a file; empty when it cannot be read.
std::string_view readText(const std::string &path, std::span<char> buffer)
{
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0)
        return {};
    const ssize_t count = pread(descriptor, buffer.data(), buffer.size(), 0);
    ::close(descriptor);
    return {buffer.data(), count > 0 ? static_cast<std::size_t>(count) : 0};
}

std::optional<float> readSpeed(const std::string &path)
{
    std::array<char, 64> buffer;
    std::string_view text = readText(path, buffer);
    const std::optional<std::uint64_t> speed = takeNumber(text);
    if (!speed || (text != "\n" && !text.empty()))
        return std::nullopt;
    return static_cast<float>(*speed);
}

/// The number in "fan12_input".
std::optional<std::uint64_t> fanNumber(const QString &input)
{
    const std::string name = input.toStdString();
    std::string_view digits(name);
    digits.remove_prefix(std::string_view("fan").size());
    digits.remove_suffix(std::string_view("_input").size());
    const bool isNumber =
        !digits.empty() && digits.find_first_not_of("0123456789") == std::string_view::npos;
    return isNumber ? takeNumber(digits) : std::nullopt;
}

std::string chipNameIn(const QDir &folder)
{
    std::array<char, 256> buffer;
    const std::string_view text =
        readText(folder.filePath(QStringLiteral("name")).toStdString(), buffer);
    return std::string(text.substr(0, text.find_last_not_of(" \n") + 1));
}

} // namespace

HwmonFans::HwmonFans(std::string folder, MonotonicClock clock)
    : m_folder(std::move(folder))
    , m_clock(std::move(clock))
{
}

bool HwmonFans::open()
{
    return true;
}

bool HwmonFans::call(const ControllerRecord &request, ControllerRecord &reply)
{
    const bool isCount = request.key == CountKey;
    // Not in the middle of a sample, whose keys are to mean the same fans.
    if (request.command == ReadKeyInfo && (isCount || !m_lookedAt))
        lookForFans();
    const std::optional<std::string> path = isCount ? std::nullopt : pathOf(request.key);
    if (!isCount && !path)
        return false;

    if (request.command == ReadKeyInfo) {
        // Not read here as well: a sensor on a slow bus takes milliseconds for an answer.
        if (path && access(path->c_str(), F_OK) != 0)
            return false;
        reply.dataType = isCount ? ByteType : FloatType;
        reply.dataSize = isCount ? 1 : sizeof(float);
        return true;
    }
    if (request.command != ReadKeyBytes)
        return false;
    if (isCount) {
        reply.data[0] = static_cast<std::uint8_t>(m_fans.size());
        return true;
    }
    const std::optional<float> speed = readSpeed(*path);
    if (!speed)
        return false;
    const auto bits = std::bit_cast<std::uint32_t>(*speed);
    for (std::size_t i = 0; i < sizeof bits; ++i)
        reply.data[i] = static_cast<std::uint8_t>(bits >> 8 * i);
    return true;
}

void HwmonFans::close()
{
    m_lookedAt.reset();
    m_monitors.clear();
    m_fans.clear();
}

void HwmonFans::lookForFans()
{
    const auto now = m_clock();
    if (m_lookedAt && now - *m_lookedAt < LookInterval)
        return;
    m_lookedAt = now;
    // Compared first: finding the fans means to read in every monitor. Once more after a change,
    // for a monitor that was met before it had its files.
    std::vector<Monitor> monitors = listMonitors();
    const bool hasChanged = monitors != m_monitors;
    if (std::exchange(m_hasChanged, hasChanged) || hasChanged) {
        m_monitors = std::move(monitors);
        findFans();
    }
}

std::vector<HwmonFans::Monitor> HwmonFans::listMonitors() const
{
    std::vector<Monitor> monitors;
    std::error_code error; // without the folder the kernel has no monitors
    for (std::filesystem::directory_iterator entry(m_folder, error), end; !error && entry != end;
         entry.increment(error)) {
        struct stat status { };
        const std::string &path = entry->path().native();
        if (::stat(path.c_str(), &status) == 0)
            monitors.push_back({path, status.st_ino,
                                status.st_mtim.tv_sec * 1'000'000'000 + status.st_mtim.tv_nsec});
    }
    std::ranges::sort(monitors, {}, &Monitor::path);
    return monitors;
}

void HwmonFans::findFans()
{
    m_fans.clear();
    const QDir folder(QString::fromStdString(m_folder));
    const QStringList monitors =
        folder.entryList({QStringLiteral("hwmon*")}, QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &monitor : monitors) {
        QDir chip(folder.filePath(monitor));
        const QString device =
            QFileInfo(chip.filePath(QStringLiteral("device"))).canonicalFilePath();
        // Some drivers keep their files with the device instead of with the monitor.
        if (!chip.exists(QStringLiteral("name")) && !device.isEmpty())
            chip.setPath(device);
        const QString place = device.isEmpty()
            ? QFileInfo(QFileInfo(folder.filePath(monitor)).canonicalFilePath()).path()
            : device;
        const std::string chipName = chipNameIn(chip);
        for (const QString &input : chip.entryList({QStringLiteral("fan*_input")}, QDir::Files)) {
            if (const std::optional<std::uint64_t> number = fanNumber(input))
                m_fans.push_back({chipName, place.toStdString(), *number,
                                  chip.filePath(input.chopped(6)).toStdString()});
        }
    }
    const auto order = [](const Fan &fan) {
        return std::tie(fan.chipName, fan.devicePath, fan.number, fan.pathStem);
    };
    std::sort(m_fans.begin(), m_fans.end(),
              [&order](const Fan &a, const Fan &b) { return order(a) < order(b); });
    m_fans.resize(std::min(m_fans.size(), MostFans));
}

std::optional<std::string> HwmonFans::pathOf(std::uint32_t key) const
{
    // "F10Ac" arrives as "F10A": fans beyond the tenth have no key.
    const std::string text = fourCharacterText(key);
    if (text.size() != 4 || text[0] != 'F' || text[1] < '0' || text[1] > '9')
        return std::nullopt;
    const auto index = static_cast<std::size_t>(text[1] - '0');
    if (index >= m_fans.size())
        return std::nullopt;
    const std::string kind = text.substr(2);
    if (kind == "Ac")
        return m_fans[index].pathStem + "_input";
    if (kind == "Mn")
        return m_fans[index].pathStem + "_min";
    if (kind == "Mx")
        return m_fans[index].pathStem + "_max";
    return std::nullopt;
}
