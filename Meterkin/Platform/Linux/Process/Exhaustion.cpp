#include "Platform/Linux/Process/Exhaustion.h"

#include "Platform/Linux/Storage/Descriptor.h"

#include <algorithm>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <future>
#include <new>
#include <system_error>
#include <thread>
#include <vector>

#include <fcntl.h>

namespace {

constexpr std::size_t Descriptors = 48; // about twice as many as it opens at the start
constexpr std::size_t Threads = 8; // short-lived ones included

bool hasDescriptors()
{
    std::vector<Descriptor> opened;
    while (opened.size() < Descriptors) {
        opened.emplace_back(open("/", O_PATH | O_CLOEXEC));
        if (!opened.back().isOpen())
            return false;
    }
    return true;
}

bool hasThreads()
{
    std::promise<void> end;
    const std::shared_future<void> ended = end.get_future();
    std::vector<std::thread> threads;
    try {
        while (threads.size() < Threads)
            threads.emplace_back([ended] { ended.wait(); });
    } catch (const std::system_error &) {
    }
    end.set_value();
    std::ranges::for_each(threads, &std::thread::join);
    return threads.size() == Threads;
}

[[noreturn]] void terminate()
{
    try {
        if (const std::exception_ptr exception = std::current_exception())
            std::rethrow_exception(exception);
    } catch (const std::bad_alloc &) {
        std::fputs("meterkin: out of memory\n", stderr);
        _exit(EXIT_FAILURE);
    } catch (const std::system_error &error) {
        std::fprintf(stderr, "meterkin: %s\n", error.what());
        _exit(EXIT_FAILURE);
    } catch (...) {
    }
    std::abort();
}

} // namespace

const char *lackingResource()
{
    if (!hasDescriptors())
        return "too few file descriptors are left";
    return hasThreads() ? nullptr : "too few threads or too little memory are left";
}

void endWhenExhausted()
{
    std::set_terminate(terminate);
}
