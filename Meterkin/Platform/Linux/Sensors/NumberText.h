#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

/// Removes leading blanks and the decimal number after them from `text`. Absent when there is no
/// number, when it has more than 19 digits, or when something other than a blank, a line's end or
/// the text's end follows it; `text` is unspecified then.
std::optional<std::uint64_t> takeNumber(std::string_view &text);

/// Removes the first line from `text` and returns it without its end. Absent when the line has no
/// end: it was cut off, perhaps in the middle of a number.
std::optional<std::string_view> takeLine(std::string_view &text);
