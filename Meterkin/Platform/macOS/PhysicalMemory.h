#pragma once

#include <cstdint>

/// Bytes of physical memory, as the system's process information tells them.
std::uint64_t physicalMemory();
