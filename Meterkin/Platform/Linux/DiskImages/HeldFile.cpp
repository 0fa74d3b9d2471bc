#include "Platform/Linux/DiskImages/HeldFile.h"

#include "Platform/Linux/DiskImages/OpenWithoutLinks.h"

#include <array>
#include <climits>
#include <utility>

#include <fcntl.h>

HeldFile::HeldFile(std::string name, Descriptor folder, Descriptor file)
    : m_name(std::move(name))
    , m_folder(std::move(folder))
    , m_file(std::move(file))
{
}

std::optional<HeldFile> HeldFile::at(const std::string &path)
{
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos || slash + 1 == path.size())
        return std::nullopt;
    Descriptor folder = openWithoutLinks(AT_FDCWD, path.substr(0, slash + 1), O_PATH | O_DIRECTORY);
    std::string name = path.substr(slash + 1);
    Descriptor file(openat(folder.number(), name.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
    HeldFile held(std::move(name), std::move(folder), std::move(file));
    if (fstat(held.m_file.number(), &held.m_status) != 0 || !S_ISREG(held.m_status.st_mode))
        return std::nullopt;
    return held;
}

std::string HeldFile::currentPath() const
{
    const std::string link = "/proc/self/fd/" + std::to_string(m_file.number());
    std::array<char, PATH_MAX> path = {};
    const ssize_t length = readlink(link.c_str(), path.data(), path.size());
    return length > 0 ? std::string(path.data(), static_cast<std::size_t>(length)) : std::string();
}

bool HeldFile::isInPlace() const
{
    struct stat now = {};
    return fstatat(m_folder.number(), m_name.c_str(), &now, AT_SYMLINK_NOFOLLOW) == 0
        && now.st_dev == m_status.st_dev && now.st_ino == m_status.st_ino;
}
