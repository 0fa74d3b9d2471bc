#include "Platform/Linux/Sensors/NumberText.h"

#include <limits>

namespace {

// Any number of so many digits fits.
constexpr std::ptrdiff_t SafeDigits = std::numeric_limits<std::uint64_t>::digits10;

} // namespace

std::optional<std::uint64_t> takeNumber(std::string_view &text)
{
    const char *first = text.data();
    const char *const last = first + text.size();
    while (first != last && (*first == ' ' || *first == '\t'))
        ++first;
    // By hand, because a reading consists of numbers, and the library checks each digit for
    // overflow.
    std::uint64_t number = 0;
    const char *end = first;
    for (; end != last && *end >= '0' && *end <= '9'; ++end)
        number = number * 10 + static_cast<std::uint64_t>(*end - '0');
    if (end == first || end - first > SafeDigits)
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
