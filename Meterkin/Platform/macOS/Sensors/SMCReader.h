#pragma once

#include "Platform/macOS/Sensors/FanControllerConnection.h"

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

/// Reads and decodes the values of the fan controller's four-character keys: "FNum" is the number
/// of fans; "F0Ac", "F0Mn" and "F0Mx" are the current, minimum and maximum speed of the first. One
/// thread at a time.
class SMCReader {
public:
    /// Connects, once.
    explicit SMCReader(std::unique_ptr<FanControllerConnection> connection);
    ~SMCReader();
    Q_DISABLE_COPY_MOVE(SMCReader)

    /// While false, each value that is read is described by a line on standard output.
    bool loggedFanType = false;

    /// False when the machine has no controller, or it refused; then every read is absent.
    bool isConnected() const { return m_isConnected; }

    /// Absent when the controller refuses. Only the first four bytes of `key`, in UTF-8, count.
    std::optional<RawKey> readRaw(std::string_view key);

    /// The value decoded by its declared type; also absent when it is not a finite number.
    std::optional<double> readValue(std::string_view key);

private:
    std::unique_ptr<FanControllerConnection> m_connection;
    bool m_isConnected = false;
};
