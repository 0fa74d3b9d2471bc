#pragma once

#include <functional>
#include <optional>

/// How often `action` asks for heap memory on this thread, through C or C++. Absent in a program
/// built with a sanitizer: that brings an allocator of its own.
std::optional<int> allocationsOf(const std::function<void()> &action);
