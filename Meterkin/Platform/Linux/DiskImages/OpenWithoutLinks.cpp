#include "Platform/Linux/DiskImages/OpenWithoutLinks.h"

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/syscall.h>

Descriptor openWithoutLinks(int folder, const std::string &path, int flags, std::uint64_t resolve)
{
    open_how how = {};
    how.flags = static_cast<std::uint64_t>(flags | O_CLOEXEC);
    how.resolve = resolve | RESOLVE_NO_SYMLINKS;
    // The C library has no function for it.
    return Descriptor(
        static_cast<int>(syscall(SYS_openat2, folder, path.c_str(), &how, sizeof how)));
}
