#pragma once

#include <functional>

/// Runs the work on a thread of its own, which nobody waits for and which ends with the work; here
/// and now when the system has no thread left. The work must not throw.
void runDetached(std::function<void()> work);
