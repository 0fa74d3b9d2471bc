#include "Model/DecimalText.h"

#include <iomanip>
#include <locale>
#include <sstream>

QString decimalText(double value, int decimals)
{
    // Neither QString, which rounds halves up, nor printf, which follows the user's locale.
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream << std::fixed << std::setprecision(decimals) << value;
    std::string digits = std::move(stream).str();
    if (digits.front() == '-' && digits.find_first_of("123456789") == std::string::npos)
        digits.erase(0, 1); // "-0%" would look like a fault
    return QString::fromLatin1(digits.data(), static_cast<qsizetype>(digits.size()));
}
