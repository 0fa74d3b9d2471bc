#pragma once

#include <QString>

#include <cstdint>

/// What is printed on the key with that virtual key code; "Key(51)" for a key without a name.
QString keyName(std::uint32_t keyCode);

/// The symbols of the stored modifier bits, in the order control, option, shift, command.
QString modifierSymbols(std::uint32_t modifiers);

/// The bits to store for the flags of a key that went down. Caps Lock and the like are dropped.
std::uint32_t carbonModifiers(std::uint32_t flags);
