#pragma once

#include <QString>

#include <cstdint>

/// The bits of the modifier keys in a stored hot key; no others are ever stored.
namespace CarbonModifier {
inline constexpr std::uint32_t command = 0x100;
inline constexpr std::uint32_t shift = 0x200;
inline constexpr std::uint32_t option = 0x800;
inline constexpr std::uint32_t control = 0x1000;
} // namespace CarbonModifier

/// The bits of the modifier keys in the flags of a key that went down.
namespace EventModifier {
inline constexpr std::uint32_t shift = 0x20000;
inline constexpr std::uint32_t control = 0x40000;
inline constexpr std::uint32_t option = 0x80000;
inline constexpr std::uint32_t command = 0x100000;
} // namespace EventModifier

/// What is printed on the key with that virtual key code; "Key(51)" for a key without a name.
QString keyName(std::uint32_t keyCode);

/// The symbols of the stored modifier bits, in the order control, option, shift, command.
QString modifierSymbols(std::uint32_t modifiers);

/// The bits to store for the flags of a key that went down. Locks and the like are dropped.
std::uint32_t carbonModifiers(std::uint32_t flags);
