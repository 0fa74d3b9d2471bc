#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// The record of every exchange with the fan controller, in host byte order.
struct ControllerRecord {
    std::uint32_t key = 0; ///< four-character code, first character in the most significant byte
    std::array<std::uint8_t, 24> versionAndLimits{};
    std::uint32_t dataSize = 0; ///< bytes
    std::uint32_t dataType = 0; ///< four-character code
    std::array<std::uint8_t, 6> attributesAndResult{};
    std::uint8_t command = 0; ///< one of ControllerCommand
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

/// A connection to what holds the fans of the machine as four-character keys: "FNum" and, a fan,
/// "F0Ac" (current), "F0Mn" (minimum), "F0Mx" (maximum). Called from one thread at a time.
class FanControllerConnection {
public:
    virtual ~FanControllerConnection() = default;

    /// Once, before the first call. False when the machine has no such controller.
    virtual bool open() = 0;
    /// One exchange. Only the status it returns tells success; `reply` is untouched on failure.
    virtual bool call(const ControllerRecord &request, ControllerRecord &reply) = 0;
    /// Only after a successful open().
    virtual void close() = 0;
    /// Whether the types of the values are this program's own, so that nothing about them is to be
    /// found out.
    virtual bool hasOwnTypes() const { return false; }
};
