#pragma once

#include "Platform/Linux/Storage/Descriptor.h"

#include <cstdint>
#include <string>

/// Opens a path that leads through no symbolic link, from a folder's descriptor or AT_FDCWD. Closed
/// on exec; `resolve` adds to the kernel's RESOLVE_ flags of openat2(). Not open when that fails,
/// as it does on kernels before 5.6. Any thread.
Descriptor openWithoutLinks(int folder, const std::string &path, int flags,
                            std::uint64_t resolve = 0);
