#pragma once

#include <functional>

/// Runs the work on a detached thread, or at once when the system has no thread left. The work must
/// not throw.
void runDetached(std::function<void()> work);
