#pragma once

#include <string>
#include <string_view>
#include <vector>

/// A file system that is mounted at a folder.
struct Mount {
    std::string device; ///< the numbers of its device, "7:0"
    std::string point;

    bool operator==(const Mount &) const = default;
};

/// The mounts of a text in the format of /proc/self/mountinfo (man 5 proc), in its order. Without
/// damaged lines, mounts of a subfolder of a file system, and mounts that a later one covers.
std::vector<Mount> mountsIn(std::string_view text);
