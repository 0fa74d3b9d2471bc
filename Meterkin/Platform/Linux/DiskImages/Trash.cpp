#include "Platform/Linux/DiskImages/Trash.h"

#include "Platform/Linux/DiskImages/HeldFile.h"
#include "Platform/Linux/DiskImages/OpenWithoutLinks.h"

#include <QByteArray>

#include <array>
#include <cerrno>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <optional>
#include <system_error>

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

constexpr int MostAttempts = 1000; // to find a free name

struct Trash {
    Descriptor folder; ///< not open when there is none
    std::string top; ///< the folder that stored paths are relative to; empty for absolute ones
};

std::string parentOf(const std::string &path)
{
    const std::size_t slash = path.rfind('/');
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string joined(const std::string &folder, const std::string &name)
{
    return folder == "/" ? folder + name : folder + '/' + name;
}

std::optional<struct stat> statusOf(const Descriptor &descriptor)
{
    struct stat status = {};
    return fstat(descriptor.number(), &status) == 0 ? std::optional(status) : std::nullopt;
}

Descriptor folderIn(const Descriptor &parent, const std::string &name)
{
    return Descriptor(
        openat(parent.number(), name.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

/// Makes the folder when it is missing. Not open for a link or another user's folder.
Descriptor ownFolderIn(const Descriptor &parent, const std::string &name)
{
    if (mkdirat(parent.number(), name.c_str(), 0700) != 0 && errno != EEXIST)
        return Descriptor(-1);
    Descriptor folder = folderIn(parent, name);
    const std::optional<struct stat> status = statusOf(folder);
    return status && status->st_uid == geteuid() ? std::move(folder) : Descriptor(-1);
}

/// Empty when it is unknown.
std::string dataFolder()
{
    std::string data = qgetenv("XDG_DATA_HOME").toStdString();
    if (data.starts_with('/'))
        return data;
    const std::string home = qgetenv("HOME").toStdString();
    return home.starts_with('/') ? home + "/.local/share" : std::string();
}

/// The topmost folder of the file system that holds `folder`.
std::string topOf(std::string folder, dev_t device)
{
    while (folder != "/") {
        std::string parent = parentOf(folder);
        struct stat status = {};
        if (lstat(parent.c_str(), &status) != 0 || status.st_dev != device)
            break;
        folder = std::move(parent);
    }
    return folder;
}

/// The Trash for files in `folder`, which lies on the file system `device`.
Trash trashFor(const std::string &folder, dev_t device)
{
    const std::string data = dataFolder();
    if (!data.empty()) {
        std::error_code ignored;
        std::filesystem::create_directories(data, ignored);
        const Descriptor place(open(data.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
        const std::optional<struct stat> status = statusOf(place);
        if (status && status->st_dev == device)
            return {ownFolderIn(place, "Trash"), {}};
    }
    const std::string top = topOf(folder, device);
    const std::string user = std::to_string(geteuid());
    const Descriptor place = openWithoutLinks(AT_FDCWD, top, O_PATH | O_DIRECTORY);
    const Descriptor shared = folderIn(place, ".Trash");
    if (const auto status = statusOf(shared); status && (status->st_mode & S_ISVTX) != 0) {
        if (Descriptor own = ownFolderIn(shared, user); own.isOpen())
            return {std::move(own), top};
    }
    return {ownFolderIn(place, ".Trash-" + user), top};
}

std::string informationOn(const std::string &path, const Trash &trash)
{
    const std::size_t skipped = trash.top.empty() ? 0 : joined(trash.top, "").size();
    const QByteArray shown = QByteArray::fromStdString(path.substr(skipped)).toPercentEncoding("/");
    const std::time_t now = std::time(nullptr);
    std::tm parts = {};
    std::array<char, 32> date = {};
    localtime_r(&now, &parts);
    std::strftime(date.data(), date.size(), "%Y-%m-%dT%H:%M:%S", &parts);
    return "[Trash Info]\nPath=" + shown.toStdString() + "\nDeletionDate=" + date.data() + '\n';
}

/// Fails where a file of that name exists.
bool rename(const HeldFile &file, const Descriptor &folder, const std::string &name)
{
    if (!file.isInPlace()) {
        errno = ENOENT;
        return false;
    }
    const int from = file.folder().number();
    // Not every C library has a function for it.
    if (syscall(SYS_renameat2, from, file.name().c_str(), folder.number(), name.c_str(),
                RENAME_NOREPLACE)
        == 0)
        return true;
    // Not every file system knows the flag.
    return (errno == EINVAL || errno == ENOSYS)
        && faccessat(folder.number(), name.c_str(), F_OK, AT_SYMLINK_NOFOLLOW) != 0
        && renameat(from, file.name().c_str(), folder.number(), name.c_str()) == 0;
}

bool writeNew(const Descriptor &folder, const std::string &name, const std::string &text)
{
    const Descriptor file(
        openat(folder.number(), name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!file.isOpen())
        return false;
    if (write(file.number(), text.data(), text.size()) == static_cast<ssize_t>(text.size()))
        return true;
    unlinkat(folder.number(), name.c_str(), 0);
    errno = ENOSPC;
    return false;
}

} // namespace

bool moveToTrash(const HeldFile &file)
{
    const std::string path = file.currentPath();
    const std::optional<struct stat> source = statusOf(file.folder());
    if (!path.starts_with('/') || !source)
        return false;
    const Trash trash = trashFor(parentOf(path), source->st_dev);
    const Descriptor files = ownFolderIn(trash.folder, "files");
    const Descriptor infos = ownFolderIn(trash.folder, "info");
    const std::optional<struct stat> target = statusOf(files);
    if (!target || !infos.isOpen()
        || (target->st_dev == source->st_dev && target->st_ino == source->st_ino))
        return false;

    const std::string information = informationOn(path, trash);
    for (int attempt = 1; attempt <= MostAttempts; ++attempt) {
        const std::string free =
            attempt == 1 ? file.name() : file.name() + '.' + std::to_string(attempt);
        // Creating the information file reserves the name.
        const std::string info = free + ".trashinfo";
        if (!writeNew(infos, info, information)) {
            if (errno == EEXIST)
                continue;
            return false;
        }
        if (rename(file, files, free))
            return true;
        const bool isTaken = errno == EEXIST;
        unlinkat(infos.number(), info.c_str(), 0);
        if (!isTaken)
            return false;
    }
    return false;
}
