#pragma once

#include "Platform/Linux/Storage/Descriptor.h"

#include <optional>
#include <string>

#include <sys/stat.h>

/// A regular file, open together with its folder: renaming the folders of its path cannot replace
/// it by another file. Any thread.
class HeldFile {
public:
    /// Absent when there is none at the absolute path, or when the path leads through a link.
    static std::optional<HeldFile> at(const std::string &path);

    const std::string &name() const { return m_name; } ///< in the folder
    std::string currentPath() const; ///< the kernel's path of the file now; empty when unknown
    const Descriptor &folder() const { return m_folder; } ///< opened with O_PATH
    const struct stat &status() const { return m_status; } ///< when it was opened

    /// Whether its name in its folder still is that of this file.
    bool isInPlace() const;

private:
    HeldFile(std::string name, Descriptor folder, Descriptor file);

    std::string m_name;
    Descriptor m_folder;
    Descriptor m_file; ///< open, so that no other file gets its inode number
    struct stat m_status = {};
};
