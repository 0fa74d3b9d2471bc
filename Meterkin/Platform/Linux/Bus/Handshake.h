#pragma once

#include <QString>

enum class BusState {
    Absent, ///< nobody listens, or sends clients away
    Silent, ///< takes clients, and does not answer them in time
    Answering,
};

/// Greets the bus at that address as a client of its own, and leaves. Waits for the answer; on any
/// thread.
BusState greetBus(const QString &address, int milliseconds);
