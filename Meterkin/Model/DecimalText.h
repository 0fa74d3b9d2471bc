#pragma once

#include <QString>

/// A finite number with that many decimals and a point, whatever the locale; halves go to the even
/// digit. What rounds to zero has no sign.
QString decimalText(double value, int decimals);
