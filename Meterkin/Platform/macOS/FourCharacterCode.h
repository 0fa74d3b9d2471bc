#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

/// The code of a controller key or type: at most the first four bytes of its UTF-8 text, the first
/// one in the most significant byte, zero for what is missing.
constexpr std::uint32_t fourCharacterCode(std::string_view text)
{
    std::uint32_t code = 0;
    for (std::size_t i = 0; i < 4; ++i)
        code = code << 8 | (i < text.size() ? static_cast<std::uint8_t>(text[i]) : 0U);
    return code;
}

/// The text a code stands for, without the zeros that fill it up; empty when it is not ASCII.
inline std::string fourCharacterText(std::uint32_t code)
{
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8)
        text += static_cast<char>(code >> shift & 0xFF);
    text.erase(text.find_last_not_of('\0') + 1);
    const auto isASCII = [](char c) { return static_cast<std::uint8_t>(c) < 0x80; };
    return std::all_of(text.begin(), text.end(), isASCII) ? text : std::string();
}
