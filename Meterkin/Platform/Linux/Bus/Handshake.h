#pragma once

#include <QString>

#include <chrono>

enum class BusState {
    Absent, ///< nobody listens, or turns clients away
    Silent, ///< accepts clients, and does not answer them in time
    Answering,
};

/// Connects to the bus at that address as a client of its own, says hello, and disconnects. Blocks
/// for the answer; on any thread.
BusState performHandshake(const QString &address, std::chrono::milliseconds timeout);
