#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// The record of every exchange with the fan controller, in host byte order.
struct ControllerRecord {
    std::uint32_t key = 0; ///< four-character code
    std::array<std::uint8_t, 24> versionAndLimits{};
    std::uint32_t dataSize = 0; ///< bytes
    std::uint32_t dataType = 0; ///< four-character code
    std::array<std::uint8_t, 6> attributesAndResult{};
    std::uint8_t command = 0; ///< a ControllerCommand
    std::array<std::uint8_t, 5> reserved{};
    std::array<std::uint8_t, 32> data{};
};
static_assert(sizeof(ControllerRecord) == 80);
static_assert(offsetof(ControllerRecord, dataSize) == 28);
static_assert(offsetof(ControllerRecord, dataType) == 32);
static_assert(offsetof(ControllerRecord, command) == 42);
static_assert(offsetof(ControllerRecord, data) == 48);

enum ControllerCommand : std::uint8_t {
    ReadKeyBytes = 5,
    ReadKeyInfo = 9,
};

/// A connection to the controller that holds the fans. One thread at a time.
class FanControllerConnection {
public:
    virtual ~FanControllerConnection() = default;

    /// Once, before the first call. False when the machine has no controller, or it refuses.
    virtual bool open() = 0;
    /// One exchange. Only the returned status tells success; on failure `reply` is unchanged.
    virtual bool call(const ControllerRecord &request, ControllerRecord &reply) = 0;
    /// Only after a successful open().
    virtual void close() = 0;
};
