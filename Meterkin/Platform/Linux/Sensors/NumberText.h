#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

/// Takes the blanks and the decimal number at the front of `text` away. Absent when there is no
/// number, when it does not fit, or when it is not followed by a blank, a line's end or the end;
/// `text` is unspecified then.
std::optional<std::uint64_t> takeNumber(std::string_view &text);

/// Takes the first line away and returns it without its end. Absent when no line's end is left:
/// what remains then was cut off and may stop in the middle of a number.
std::optional<std::string_view> takeLine(std::string_view &text);
