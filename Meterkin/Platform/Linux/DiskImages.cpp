#include "Platform/Linux/DiskImages.h"

#include "Platform/Linux/DiskImages/HeldFile.h"
#include "Platform/Linux/DiskImages/MountTable.h"
#include "Platform/Linux/DiskImages/ProgramCopy.h"
#include "Platform/Linux/DiskImages/StorageService.h"
#include "Platform/Linux/DiskImages/Trash.h"
#include "Platform/Linux/Sensors/KernelFile.h"
#include "Platform/Linux/Sensors/NumberText.h"
#include "Platform/Linux/Storage/Descriptor.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <linux/loop.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// Empty when it cannot be read.
std::string lineOf(const std::string &path)
{
    KernelFile file(path);
    std::string text(file.read().value_or(std::string_view()));
    if (text.ends_with('\n'))
        text.pop_back();
    return text;
}

/// The numbers of a block device, as "7:0".
std::string deviceOf(std::string folder)
{
    return lineOf(folder.append("/dev"));
}

/// Absent for a path that is not valid text, because decoding it would name another file.
std::optional<QString> textOf(const std::string &path)
{
    const QByteArray bytes = QByteArray::fromStdString(path);
    const QString text = QFile::decodeName(bytes);
    return QFile::encodeName(text) == bytes ? std::optional(text) : std::nullopt;
}

/// False for a disk behind a loop device and for a path from another root folder. True for a file
/// that was deleted: its volume still exists.
bool canBeImage(const std::string &path)
{
    struct stat status = {};
    return path.starts_with('/')
        && (lstat(path.c_str(), &status) == 0 ? S_ISREG(status.st_mode) : errno == ENOENT);
}

} // namespace

LinuxDiskImages::LinuxDiskImages(std::string blockFolder, std::string mountInfoPath,
                                 std::string deviceFolder)
    : m_blockFolder(std::move(blockFolder))
    , m_mountInfoPath(std::move(mountInfoPath))
    , m_deviceFolder(std::move(deviceFolder))
{
}

std::optional<QList<DiskImage>> LinuxDiskImages::attachedImages()
{
    const std::optional<std::vector<Loop>> attached = loops();
    if (!attached)
        return std::nullopt;
    QList<DiskImage> images;
    for (const Loop &loop : *attached) {
        const std::optional<QString> imagePath = textOf(loop.imagePath);
        if (!imagePath || !canBeImage(loop.imagePath))
            continue;
        DiskImage image{*imagePath, {}};
        for (const Volume &volume : loop.volumes) {
            if (const std::optional<QString> point = textOf(volume.mountPoint))
                image.mountPoints << *point;
        }
        images << image;
    }
    return images;
}

bool LinuxDiskImages::holdsBundle(const QString &mountPoint, const QString &name)
{
    return holdsProgramCopy(QFile::encodeName(mountPoint).toStdString(),
                            QFile::encodeName(name).toStdString());
}

void LinuxDiskImages::detachAndDiscard(const DiskImage &image, const QString &mountPoint)
{
    const std::string imagePath = QFile::encodeName(image.imagePath).toStdString();
    const std::string point = QFile::encodeName(mountPoint).toStdString();
    const auto isFound = [&](const Volume &volume) { return volume.mountPoint == point; };
    std::optional<std::vector<Loop>> attached = loops();
    if (!attached)
        return;
    const auto loop = std::find_if(attached->begin(), attached->end(), [&](const Loop &each) {
        return each.imagePath == imagePath
            && std::any_of(each.volumes.begin(), each.volumes.end(), isFound);
    });
    if (loop == attached->end())
        return;
    std::stable_partition(loop->volumes.begin(), loop->volumes.end(), isFound);

    // Many loop devices free themselves when unmounted. An open one cannot be reused for another
    // image meanwhile; a user who may not open it may not free a wrong one either.
    const Descriptor device(
        open((m_deviceFolder + '/' + loop->name).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    // Unmounting takes time, in which the path may become that of another file.
    const std::optional<HeldFile> file = HeldFile::at(imagePath);
    const bool isOurs =
        file && file->status().st_uid == geteuid() && presents(*loop, device, *file);
    if (detach(*loop, device) && isOurs)
        moveToTrash(*file);
}

/// Whether the file is the one behind the device: as the device says or, when we may not open it,
/// because the kernel has the same path for both at this moment.
bool LinuxDiskImages::presents(const Loop &loop, const Descriptor &device,
                               const HeldFile &file) const
{
    loop_info64 information = {};
    if (ioctl(device.number(), LOOP_GET_STATUS64, &information) == 0)
        return information.lo_device == file.status().st_dev
            && information.lo_inode == file.status().st_ino;
    return imagePathOf(loop.name) == file.currentPath();
}

/// Whether there was a way to detach at all, not whether it worked.
bool LinuxDiskImages::detach(const Loop &loop, const Descriptor &device) const
{
    const auto isSame = [&] { return imagePathOf(loop.name) == loop.imagePath; };
    if (!isSame())
        return false;
    StorageService service;
    for (const Volume &volume : loop.volumes) {
        if (service.unmount(volume.device)
            || umount2(volume.mountPoint.c_str(), UMOUNT_NOFOLLOW) == 0)
            continue;
        return service.isThere() || errno != EPERM;
    }
    const bool isFree = ioctl(device.number(), LOOP_CLR_FD, 0) == 0;
    if (!isFree && isSame())
        service.deleteLoop(loop.name);
    return true;
}

std::optional<std::vector<LinuxDiskImages::Loop>> LinuxDiskImages::loops() const
{
    KernelFile mountInfo(m_mountInfoPath);
    const std::optional<std::string_view> text = mountInfo.read();
    if (!text)
        return std::nullopt;
    const std::vector<Mount> mounts = mountsIn(*text);

    std::vector<Loop> found;
    for (const std::string &name : namesIn(m_blockFolder, "loop")) {
        Loop loop{name, imagePathOf(name), {}};
        if (loop.imagePath.empty())
            continue;
        const std::string folder = m_blockFolder + '/' + name;
        std::vector<std::pair<std::string, std::string>> devices{{deviceOf(folder), name}};
        for (const std::string &partition : namesIn(folder, name + 'p'))
            devices.emplace_back(deviceOf(std::string(folder).append("/").append(partition)),
                                 partition);
        // By number, because the source in the table is any text that mount() was given.
        for (const Mount &mount : mounts) {
            const auto device = std::find_if(devices.begin(), devices.end(), [&](const auto &each) {
                return each.first == mount.device;
            });
            if (device != devices.end())
                loop.volumes.push_back({device->second, mount.point});
        }
        found.push_back(std::move(loop));
    }
    return found;
}

/// The entries of a folder that consist of the prefix and a number, in the order of the numbers.
std::vector<std::string> LinuxDiskImages::namesIn(const std::string &folder,
                                                  const std::string &prefix) const
{
    std::vector<std::pair<std::uint64_t, std::string>> numbered;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        std::string name = entry->path().filename().string();
        if (!name.starts_with(prefix))
            continue;
        std::string_view digits = std::string_view(name).substr(prefix.size());
        if (digits.find_first_not_of("0123456789") != std::string_view::npos)
            continue;
        if (const std::optional<std::uint64_t> number = takeNumber(digits))
            numbered.emplace_back(*number, std::move(name));
    }
    std::sort(numbered.begin(), numbered.end());
    std::vector<std::string> names;
    names.reserve(numbered.size());
    for (auto &[number, name] : numbered)
        names.push_back(std::move(name));
    return names;
}

std::string LinuxDiskImages::imagePathOf(const std::string &loop) const
{
    return lineOf(m_blockFolder + '/' + loop + "/loop/backing_file");
}
