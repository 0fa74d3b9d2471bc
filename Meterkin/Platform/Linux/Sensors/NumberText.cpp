#include "Platform/Linux/Sensors/NumberText.h"

#include <charconv>

std::optional<std::uint64_t> takeNumber(std::string_view &text)
{
    const char *first = text.data();
    const char *const last = first + text.size();
    while (first != last && (*first == ' ' || *first == '\t'))
        ++first;
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(first, last, number);
    if (error != std::errc())
        return std::nullopt;
    if (end != last && *end != ' ' && *end != '\t' && *end != '\n')
        return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

std::optional<std::string_view> takeLine(std::string_view &text)
{
    const std::size_t end = text.find('\n');
    if (end == std::string_view::npos)
        return std::nullopt;
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end + 1);
    return line;
}
