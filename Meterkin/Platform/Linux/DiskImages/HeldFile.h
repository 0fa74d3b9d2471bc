#pragma once

#include "Platform/Linux/Storage/Descriptor.h"

#include <optional>
#include <string>

#include <sys/stat.h>

/// A regular file that is held together with its folder: what becomes of the folders on the way to
/// it can no longer put another file in its place. Any thread.
class HeldFile {
public:
    /// Absent when there is none at that absolute path, or when a link lies on the way.
    static std::optional<HeldFile> at(const std::string &path);

    const std::string &name() const { return m_name; } ///< in the folder
    std::string currentPath() const; ///< as the kernel has it now; empty when it does not tell
    const Descriptor &folder() const { return m_folder; } ///< opened as a mere place
    const struct stat &status() const { return m_status; } ///< at the time it was opened

    /// Whether its name in its folder still stands for it.
    bool isInPlace() const;

private:
    HeldFile(std::string name, Descriptor folder, Descriptor file);

    std::string m_name;
    Descriptor m_folder;
    Descriptor m_file; ///< while it is open nobody else gets its inode number
    struct stat m_status = {};
};
