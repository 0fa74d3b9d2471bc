#include "Model/DecimalText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace {

constexpr double MostExact = 9e15; // whole numbers up to there are exact

} // namespace

QString decimalText(double value, int decimals)
{
    if (decimals == 0 && std::abs(value) < MostExact)
        return QString::number(std::llrint(value));
    // Not QString's own formatting, which rounds halves up. The largest double has 309 digits.
    std::array<char, 384> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%.*f", decimals, value);
    const QLatin1StringView printed(buffer.data());
    // The decimal separator is the one of the user's locale.
    const qsizetype sign = printed.startsWith(u'-') ? 1 : 0;
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    const auto wholeEnd = std::find_if_not(printed.begin() + sign, printed.end(), isDigit);
    QString text = printed.first(wholeEnd - printed.begin());
    if (decimals > 0)
        text += u'.' + printed.last(decimals);
    const bool isZero = std::ranges::none_of(printed, [](char c) { return c >= '1' && c <= '9'; });
    return sign != 0 && isZero ? text.sliced(1) : text; // "-0%" would look like a fault
}

QString gibibyteText(std::uint64_t bytes)
{
    return decimalText(static_cast<double>(bytes) / (1024.0 * 1024.0 * 1024.0), 1);
}
