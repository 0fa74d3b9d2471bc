#pragma once

#include <QString>

#include <cstdint>

/// A finite number with that many decimals and a point, whatever the locale; halves go to the even
/// digit. What rounds to zero has no sign.
QString decimalText(double value, int decimals);

/// In gibibytes, with one decimal and without a unit.
QString gibibyteText(std::uint64_t bytes);
