#include "Platform/Linux/Process/Memory.h"

#include <QCoreApplication>

#include <cstdint>
#include <cstdlib>
#include <vector>

#include <malloc.h>
#include <pthread.h>
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

#ifdef __GLIBC__

// Of the C library's cache of each thread; other values would only make it less empty.
constexpr std::size_t SmallestChunk = 24;
constexpr std::size_t LargestChunk = 1032;
constexpr std::size_t ChunkStep = 16;
constexpr int ChunksOfASize = 7;

using Chunks = std::vector<void *>;

void *freeChunks(void *chunks)
{
    for (void *chunk : *static_cast<Chunks *>(chunks))
        std::free(chunk);
    return nullptr;
}

/// The C library keeps some freed chunks of each small size for the thread that freed them, for as
/// long as that runs, and with each of them its page. So a thread that ends frees them again.
void emptyThreadCache()
{
    Chunks chunks;
    for (std::size_t size = SmallestChunk; size <= LargestChunk; size += ChunkStep) {
        for (int count = 0; count < ChunksOfASize; ++count)
            chunks.push_back(std::malloc(size));
    }
    pthread_t thread{};
    if (pthread_create(&thread, nullptr, freeChunks, &chunks) == 0)
        pthread_join(thread, nullptr);
    else
        freeChunks(&chunks);
}

void giveHeapBack()
{
    emptyThreadCache();
    malloc_trim(0);
}

} // namespace

void useLittleMemory()
{
    mallopt(M_ARENA_MAX, 1);
}

#else // other C libraries keep less, and give it back by themselves

void giveHeapBack() { }

} // namespace

void useLittleMemory() { }

#endif

void giveMemoryBackSoon()
{
    QMetaObject::invokeMethod(
        qApp,
        [] {
            giveHeapBack();
            giveStackBack();
        },
        Qt::QueuedConnection);
}
