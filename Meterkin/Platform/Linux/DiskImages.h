#pragma once

#include "Platform/DiskImages.h"

#include <string>
#include <vector>

class Descriptor;
class HeldFile;

/// Files that loop devices present as disks (man 4 loop), found through /sys/block. Images of other
/// programs are listed too; the content of a volume tells which one is ours.
class LinuxDiskImages : public DiskImages {
public:
    explicit LinuxDiskImages(std::string blockFolder = "/sys/block",
                             std::string mountInfoPath = "/proc/self/mountinfo",
                             std::string deviceFolder = "/dev");

    /// In the order of the devices' numbers, the mount points of each in the order of mounting.
    std::optional<QList<DiskImage>> attachedImages() override;
    /// Whether a copy of the running program lies there.
    bool holdsBundle(const QString &mountPoint, const QString &name) override;
    /// Unmounts the volume, then the other volumes of its image, and frees the loop device: through
    /// UDisks, else directly. Stops at the first refusal. The file is discarded only when it is the
    /// user's and still the one behind the device.
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

    /// Those with a file, in the order of their numbers; absent when they cannot be read.
    std::optional<std::vector<Loop>> loops() const;
    bool presents(const Loop &loop, const Descriptor &device, const HeldFile &file) const;
    bool detach(const Loop &loop, const Descriptor &device) const;
    std::vector<std::string> namesIn(const std::string &folder, const std::string &prefix) const;
    std::string imagePathOf(const std::string &loop) const;

    std::string m_blockFolder;
    std::string m_mountInfoPath;
    std::string m_deviceFolder;
};
