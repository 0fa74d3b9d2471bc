#pragma once

#include <chrono>
#include <functional>

/// Tells the time of what must not jump: animations. Injected, so that tests drive it.
using MonotonicClock = std::function<std::chrono::steady_clock::time_point()>;

/// Tells the wall clock: cooldowns. Injected likewise.
using WallClock = std::function<std::chrono::system_clock::time_point()>;
