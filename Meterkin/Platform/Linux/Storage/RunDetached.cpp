#include "Platform/Linux/Storage/RunDetached.h"

#include <system_error>
#include <thread>

void runDetached(std::function<void()> work)
{
    try {
        std::thread(work).detach();
    } catch (const std::system_error &) {
        work();
    }
}
