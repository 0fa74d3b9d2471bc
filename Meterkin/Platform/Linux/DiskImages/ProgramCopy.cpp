#include "Platform/Linux/DiskImages/ProgramCopy.h"

#include "Platform/Linux/DiskImages/OpenWithoutLinks.h"
#include "Platform/Linux/Process/ProgramLocation.h"

#include <QFile>

#include <cstring>
#include <vector>

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>

namespace {

constexpr std::size_t ChunkBytes = 64 * 1024;

/// Reads no more than `size` bytes of each.
bool haveSameContent(int one, int other, off_t size)
{
    std::vector<char> chunk(ChunkBytes);
    std::vector<char> otherChunk(ChunkBytes);
    for (off_t at = 0; at < size;) {
        const ssize_t count = pread(one, chunk.data(), chunk.size(), at);
        if (count <= 0)
            return false;
        const auto bytes = static_cast<std::size_t>(count);
        if (pread(other, otherChunk.data(), bytes, at) != count
            || std::memcmp(chunk.data(), otherChunk.data(), bytes) != 0)
            return false;
        at += count;
    }
    return true;
}

bool isCopy(const Descriptor &original, const Descriptor &candidate)
{
    struct stat ours = {};
    struct stat theirs = {};
    if (fstat(original.number(), &ours) != 0 || fstat(candidate.number(), &theirs) != 0)
        return false;
    const bool isItself = ours.st_dev == theirs.st_dev && ours.st_ino == theirs.st_ino;
    return !isItself && S_ISREG(theirs.st_mode) && theirs.st_size == ours.st_size
        && haveSameContent(original.number(), candidate.number(), ours.st_size);
}

} // namespace

bool holdsProgramCopy(const std::string &folder, const std::string &name)
{
    const ProgramFile program = programFile();
    const Descriptor original(
        open(QFile::encodeName(program.path).constData(), O_RDONLY | O_CLOEXEC));
    const Descriptor top = openWithoutLinks(AT_FDCWD, folder, O_PATH | O_DIRECTORY);
    const Descriptor candidate = openWithoutLinks(
        top.number(), name + QFile::encodeName(program.placeInBundle).toStdString(),
        O_RDONLY | O_NONBLOCK, RESOLVE_BENEATH | RESOLVE_NO_XDEV);
    return isCopy(original, candidate);
}
