#pragma once

#include "Platform/Linux/Storage/Descriptor.h"

#include <cstdint>
#include <string>

/// Opens a path unless it leads through a symbolic link, by openat2() (man 2 openat2), relative to
/// a folder's descriptor or AT_FDCWD. `resolve` adds RESOLVE_ flags. Not open on failure, as on
/// kernels before 5.6. Any thread.
Descriptor openWithoutLinks(int folder, const std::string &path, int flags,
                            std::uint64_t resolve = 0);
