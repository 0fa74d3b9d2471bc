#include "Platform/Linux/Trash.h"

#include <QByteArray>

#include <array>
#include <cerrno>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <optional>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int MostAttempts = 1000; // to find a free name

struct Trash {
    std::string folder;
    std::string top; ///< what the paths in it are relative to; empty: they are whole
};

std::optional<struct stat> statusOf(const std::string &path)
{
    struct stat status = {};
    return lstat(path.c_str(), &status) == 0 ? std::optional(status) : std::nullopt;
}

std::string parentOf(const std::string &path)
{
    const std::size_t slash = path.rfind('/');
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string joined(const std::string &folder, const std::string &name)
{
    return folder == "/" ? folder + name : folder + '/' + name;
}

/// Makes the user's own folder where it is missing. One that a link or another user put there is
/// none.
bool ensureFolder(const std::string &path)
{
    if (mkdir(path.c_str(), 0700) != 0 && errno != EEXIST)
        return false;
    const std::optional<struct stat> status = statusOf(path);
    return status && S_ISDIR(status->st_mode) && status->st_uid == geteuid();
}

/// Where the user keeps data; empty when that is unknown.
std::string dataFolder()
{
    std::string data = qgetenv("XDG_DATA_HOME").toStdString();
    if (data.starts_with('/'))
        return data;
    const std::string home = qgetenv("HOME").toStdString();
    return home.starts_with('/') ? home + "/.local/share" : std::string();
}

/// The file system's topmost folder on the way to `folder`.
std::string topOf(std::string folder, dev_t device)
{
    while (folder != "/") {
        std::string parent = parentOf(folder);
        const std::optional<struct stat> status = statusOf(parent);
        if (!status || status->st_dev != device)
            break;
        folder = std::move(parent);
    }
    return folder;
}

/// The Trash for what lies in a folder of the file system `device`.
std::optional<Trash> trashFor(const std::string &folder, dev_t device)
{
    const std::string data = dataFolder();
    std::error_code ignored;
    if (!data.empty())
        std::filesystem::create_directories(data, ignored);
    struct stat status = {};
    if (!data.empty() && stat(data.c_str(), &status) == 0 && status.st_dev == device) {
        Trash trash{data + "/Trash", {}};
        return ensureFolder(trash.folder) ? std::optional(trash) : std::nullopt;
    }
    const std::string top = topOf(folder, device);
    const std::string user = std::to_string(geteuid());
    const std::string shared = joined(top, ".Trash");
    const std::optional<struct stat> sharedStatus = statusOf(shared);
    if (sharedStatus && S_ISDIR(sharedStatus->st_mode) && (sharedStatus->st_mode & S_ISVTX) != 0
        && ensureFolder(shared + '/' + user))
        return Trash{shared + '/' + user, top};
    const std::string own = joined(top, ".Trash-" + user);
    return ensureFolder(own) ? std::optional(Trash{own, top}) : std::nullopt;
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

/// Only where nothing is in the way.
bool rename(const std::string &from, const std::string &to)
{
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0)
        return true;
    // Not every file system knows the flag.
    return (errno == EINVAL || errno == ENOSYS) && !statusOf(to)
        && std::rename(from.c_str(), to.c_str()) == 0;
}

bool writeNew(const std::string &path, const std::string &text)
{
    const int descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (descriptor < 0)
        return false;
    const bool isWritten =
        write(descriptor, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    if (close(descriptor) == 0 && isWritten)
        return true;
    unlink(path.c_str());
    errno = ENOSPC;
    return false;
}

} // namespace

bool moveToTrash(const std::string &path)
{
    const std::string folder = parentOf(path);
    struct stat folderStatus = {};
    const std::optional<struct stat> status = statusOf(path);
    if (!status || !S_ISREG(status->st_mode) || stat(folder.c_str(), &folderStatus) != 0)
        return false;
    const std::optional<Trash> trash = trashFor(folder, folderStatus.st_dev);
    if (!trash)
        return false;
    const std::string files = trash->folder + "/files/";
    const std::string infos = trash->folder + "/info/";
    if (!ensureFolder(trash->folder + "/files") || !ensureFolder(trash->folder + "/info"))
        return false;
    const std::optional<struct stat> filesStatus = statusOf(trash->folder + "/files");
    if (!filesStatus
        || (filesStatus->st_dev == folderStatus.st_dev
            && filesStatus->st_ino == folderStatus.st_ino))
        return false;

    const std::string name = path.substr(path.rfind('/') + 1);
    const std::string information = informationOn(path, *trash);
    for (int attempt = 1; attempt <= MostAttempts; ++attempt) {
        const std::string free = attempt == 1 ? name : name + '.' + std::to_string(attempt);
        // Whose information stands first has the name.
        const std::string info = infos + free + ".trashinfo";
        if (!writeNew(info, information)) {
            if (errno == EEXIST)
                continue;
            return false;
        }
        if (rename(path, files + free))
            return true;
        const bool isTaken = errno == EEXIST;
        unlink(info.c_str());
        if (!isTaken)
            return false;
    }
    return false;
}
