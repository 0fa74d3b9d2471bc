#pragma once

#include <QString>

#include <cstdint>

/// A finite number with that many decimals and a point, whatever the locale; halves go to the even
/// digit. What rounds to zero has no sign.
QString decimalText(double value, int decimals);

/// So many gibibytes, with one decimal.
QString gibibyteText(std::uint64_t bytes);
