#include "AllocationCounter.h"

#include <cstddef>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)

std::optional<int> allocationsOf(const std::function<void()> &)
{
    return std::nullopt;
}

#else

namespace {

thread_local int allocations = 0;

} // namespace

// operator new of the standard library comes through here too.
extern "C" {

void *__libc_malloc(std::size_t size);
void *__libc_calloc(std::size_t count, std::size_t size);
void *__libc_realloc(void *memory, std::size_t size);

void *malloc(std::size_t size)
{
    ++allocations;
    return __libc_malloc(size);
}

void *calloc(std::size_t count, std::size_t size)
{
    ++allocations;
    return __libc_calloc(count, size);
}

void *realloc(void *memory, std::size_t size)
{
    ++allocations;
    return __libc_realloc(memory, size);
}

} // extern "C"

std::optional<int> allocationsOf(const std::function<void()> &action)
{
    const int before = allocations;
    action();
    return allocations - before;
}

#endif
