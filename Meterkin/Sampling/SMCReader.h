#pragma once

#include "Platform/FanControllerConnection.h"

#include <QtGlobal>

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

/// What the controller holds under a key.
struct RawKey {
    std::array<std::uint8_t, 4> bytes{}; ///< the first four, whatever the size
    std::uint32_t dataType = 0; ///< four-character code
    std::uint32_t dataSize = 0; ///< declared length in bytes
};

/// Reads and decodes keys of the fan controller. One thread at a time.
class SMCReader {
public:
    /// Connects; there is no second try.
    explicit SMCReader(std::unique_ptr<FanControllerConnection> connection);
    ~SMCReader();
    Q_DISABLE_COPY_MOVE(SMCReader)

    /// While false, each value read is described by a line on standard output. True from the start
    /// when the connection has types of our own.
    bool loggedFanType = false;

    /// False when the machine has no controller; every read is absent then.
    bool isConnected() const { return m_isConnected; }

    /// Absent when the controller does not answer for the key. Only the first four bytes of the
    /// UTF-8 text name a key.
    std::optional<RawKey> readRaw(std::string_view key);

    /// The value decoded by its declared type; also absent when it is not a finite number.
    std::optional<double> readValue(std::string_view key);

private:
    std::unique_ptr<FanControllerConnection> m_connection;
    bool m_isConnected = false;
};
