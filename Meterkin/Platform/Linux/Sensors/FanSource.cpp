#include "Platform/Linux/Sensors/FanSource.h"

#include "Platform/Linux/Sensors/NumberText.h"
#include "Platform/Log.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <span>
#include <string_view>
#include <tuple>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

constexpr std::chrono::seconds LookInterval{5};

/// Of a folder, as the kernel lists it: not every C library declares that.
struct FolderEntry {
    std::uint64_t inode;
    std::int64_t offset;
    std::uint16_t size;
    std::uint8_t kind;
    char name[1]; ///< and more, up to a zero
};

/// As much of a file as fits; empty when it cannot be read, with the reason in errno.
std::string_view readText(const std::string &path, std::span<char> buffer)
{
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0)
        return {};
    const ssize_t count = pread(descriptor, buffer.data(), buffer.size(), 0);
    ::close(descriptor);
    return {buffer.data(), count > 0 ? static_cast<std::size_t>(count) : 0};
}

/// The text of a file without the blanks at its end.
std::string readLine(const std::string &path)
{
    std::array<char, 256> buffer;
    const std::string_view text = readText(path, buffer);
    return std::string(text.substr(0, text.find_last_not_of(" \n") + 1));
}

std::optional<double> readSpeed(const std::string &path)
{
    std::array<char, 64> buffer;
    std::string_view text = readText(path, buffer);
    const std::optional<std::uint64_t> speed = takeNumber(text);
    if (!speed || (text != "\n" && !text.empty()))
        return std::nullopt;
    return static_cast<double>(*speed);
}

/// The paths in a folder; none when it cannot be listed.
std::vector<std::string> entriesOf(const std::string &folder)
{
    std::vector<std::string> paths;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error))
        paths.push_back(entry->path().native());
    return paths;
}

/// Of what changes when a monitor is replaced, or gets or loses a file. Taken without the memory
/// that listing a folder in the usual way allocates.
std::uint64_t hashOfMonitors(const std::string &folder)
{
    std::uint64_t hash = 0;
    const auto add = [&hash](std::uint64_t value) { hash = (hash ^ value) * 0x100000001b3U; };
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return hash;
    alignas(FolderEntry) std::array<char, 2048> entries;
    long size = 0;
    while ((size = syscall(SYS_getdents64, descriptor, entries.data(), entries.size())) > 0) {
        for (long at = 0; at < size;) {
            const auto *entry = reinterpret_cast<const FolderEntry *>(entries.data() + at);
            at += entry->size;
            struct stat status { };
            if (entry->name[0] == '.' || ::fstatat(descriptor, entry->name, &status, 0) != 0)
                continue;
            for (const char *letter = entry->name; *letter != '\0'; ++letter)
                add(static_cast<unsigned char>(*letter));
            add(status.st_ino);
            add(static_cast<std::uint64_t>(status.st_mtim.tv_sec));
            add(static_cast<std::uint64_t>(status.st_mtim.tv_nsec));
        }
    }
    ::close(descriptor);
    return hash;
}

/// The path with all links resolved; empty when there is no such file.
std::string canonical(const std::string &path)
{
    std::error_code error;
    return std::filesystem::canonical(path, error).native();
}

} // namespace

LinuxFanSource::LinuxFanSource(std::string folder, MonotonicClock clock)
    : m_folder(std::move(folder))
    , m_clock(std::move(clock))
{
}

void LinuxFanSource::read(FanSample &sample)
{
    lookForFans();
    sample.count = std::ssize(m_fans);
    sample.fans.clear();
    std::int64_t index = 0;
    for (const Fan &fan : m_fans) {
        errno = 0;
        if (const std::optional<double> rpm = readSpeed(fan.input))
            sample.fans.append(
                {index, *rpm, readSpeed(fan.minimum), readSpeed(fan.maximum), fan.name});
        else
            warnOnce(fan.input, errno);
        ++index;
    }
}

void LinuxFanSource::lookForFans()
{
    const auto now = m_clock();
    if (m_lookedAt && now - *m_lookedAt < LookInterval)
        return;
    m_lookedAt = now;
    // Compared first, because finding the fans lists every monitor. After a change they are found
    // twice: a new monitor may get its files only after it has appeared.
    const std::uint64_t monitors = hashOfMonitors(m_folder);
    const bool hasChanged = std::exchange(m_monitors, monitors) != monitors;
    if (std::exchange(m_hasChanged, hasChanged) || hasChanged)
        findFans();
}

void LinuxFanSource::findFans()
{
    const std::vector<Fan> before = std::exchange(m_fans, {});
    const std::vector<std::string> monitors = entriesOf(m_folder);
    for (const std::string &monitor : monitors)
        addFansOf(monitor);
    // The kernel numbers the monitors differently at each boot.
    std::ranges::sort(m_fans, {}, [](const Fan &fan) {
        return std::tie(fan.chip, fan.device, fan.number, fan.input);
    });
    if (m_fans.empty())
        qCDebug(logSampling, "the %zu hardware monitors in %s have no fan", monitors.size(),
                m_folder.c_str());
    else if (m_fans != before)
        for (const Fan &fan : m_fans)
            qCDebug(logSampling, "%s is a fan of chip \"%s\" with the name \"%ls\"",
                    fan.input.c_str(), fan.chip.c_str(), qUtf16Printable(fan.name));
}

void LinuxFanSource::addFansOf(const std::string &monitor)
{
    const std::string device = canonical(monitor + "/device");
    // Some drivers keep the files with the device instead of with the monitor.
    const bool isInDevice = !device.empty() && access((monitor + "/name").c_str(), F_OK) != 0;
    const std::string &folder = isInDevice ? device : monitor;
    const std::string chip = readLine(folder + "/name");
    for (const std::string &path : entriesOf(folder)) {
        constexpr std::string_view Suffix = "_input";
        const std::string prefix = folder + "/fan";
        if (!path.starts_with(prefix) || !path.ends_with(Suffix))
            continue;
        const std::string stem = path.substr(0, path.size() - Suffix.size());
        std::string_view digits = std::string_view(stem).substr(prefix.size());
        const std::optional<std::uint64_t> number = takeNumber(digits);
        if (!number || !digits.empty())
            continue;
        m_fans.push_back({chip, device.empty() ? canonical(monitor + "/..") : device, *number, path,
                          stem + "_min", stem + "_max",
                          QString::fromStdString(readLine(stem + "_label"))});
    }
}

void LinuxFanSource::warnOnce(const std::string &path, int error)
{
    const bool isGone = error == ENOENT || error == ENODEV;
    if (isGone || std::ranges::find(m_reported, path) != m_reported.end())
        return;
    m_reported.push_back(path);
    qCWarning(logSampling, "%s cannot be read (%s): the fan is left out until it can", path.c_str(),
              error == 0 ? "not a number" : std::strerror(error));
}
