#include "Platform/Linux/Memory.h"

#include <QCoreApplication>

#include <cstdint>

#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

namespace {

constexpr int KiB = 1024;
constexpr std::uintptr_t StackDepth = 512 * KiB; // the kernel keeps as much free below a stack

/// What lies below the caller's frame was left by functions that have returned.
void giveStackBack()
{
    const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    const auto frame = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
    // Two pages stay, for this call itself.
    const std::uintptr_t end = frame / page * page - 2 * page;
    madvise(reinterpret_cast<void *>(end - StackDepth), StackDepth, MADV_DONTNEED);
}

} // namespace

void useLittleMemory()
{
    mallopt(M_ARENA_MAX, 1);
}

void giveMemoryBackSoon()
{
    QMetaObject::invokeMethod(
        qApp,
        [] {
            malloc_trim(0);
            giveStackBack();
        },
        Qt::QueuedConnection);
}
