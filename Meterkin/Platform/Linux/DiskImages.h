#pragma once

#include "Platform/DiskImages.h"

#include <string>
#include <vector>

class Descriptor;
class HeldFile;

/// The disk images of Linux: files that loop devices present as disks. Images of other programs
/// are listed like any other; only the content of a volume tells whose an image is.
class LinuxDiskImages : public DiskImages {
public:
    explicit LinuxDiskImages(std::string blockFolder = "/sys/block",
                         std::string mountInfoPath = "/proc/self/mountinfo",
                         std::string deviceFolder = "/dev");

    /// In the order of the devices' numbers, the mount points of each in the order of mounting.
    std::optional<QList<DiskImage>> attachedImages() override;
    /// Whether the very program that runs lies there too.
    bool holdsBundle(const QString &mountPoint, const QString &name) override;
    /// Unmounts the volume, then the other volumes of its image, and frees the loop device: through
    /// the storage service, else directly where we may. The first refusal leaves the rest alone.
    /// The file has to be the user's own and still the one that the device presents.
    void detachAndDiscard(const DiskImage &image, const QString &mountPoint) override;

private:
    struct Volume {
        std::string device; ///< "loop0", or "loop0p1" for a partition
        std::string mountPoint;
    };
    struct Loop {
        std::string name;
        std::string imagePath; ///< ends in " (deleted)" when the file is
        std::vector<Volume> volumes;
    };

    /// Those with a file, in the order of their numbers; nothing when they cannot be read.
    std::optional<std::vector<Loop>> loops() const;
    bool presents(const Loop &loop, const Descriptor &device, const HeldFile &file) const;
    bool detach(const Loop &loop, const Descriptor &device) const;
    std::vector<std::string> namesIn(const std::string &folder, const std::string &prefix) const;
    std::string imagePathOf(const std::string &loop) const;

    std::string m_blockFolder;
    std::string m_mountInfoPath;
    std::string m_deviceFolder;
};
