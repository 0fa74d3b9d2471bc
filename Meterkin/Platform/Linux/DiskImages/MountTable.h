#pragma once

#include <string>
#include <string_view>
#include <vector>

/// A file system that can be seen at a place of the file tree.
struct Mount {
    std::string device; ///< the numbers of its device, "7:0"
    std::string point;

    bool operator==(const Mount &) const = default;
};

/// The mounts of a text in the format of /proc/self/mountinfo, in its order. Left out are damaged
/// lines, mounts of a mere folder of a file system, and those that a later one covers.
std::vector<Mount> mountsIn(std::string_view text);
