#include "Views/Dashboard/MetricCard.h"

#include "Model/DecimalText.h"

namespace {

QString extremeText(const QString &label, std::optional<double> value, const QString &unit)
{
    return value ? label + decimalText(*value, 0) + unit : QString();
}

} // namespace

QString MetricCard::highText() const
{
    return extremeText(QStringLiteral("H: "), high, unit);
}

QString MetricCard::lowText() const
{
    return extremeText(QStringLiteral("L: "), low, unit);
}
