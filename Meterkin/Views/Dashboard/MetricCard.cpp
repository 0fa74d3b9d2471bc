#include "Views/Dashboard/MetricCard.h"

#include "Model/DecimalText.h"

#include <QCoreApplication>

namespace {

/// `form` has %1 for the value.
QString extremeText(const char *form, std::optional<double> value, const QString &unit)
{
    return value
        ? QCoreApplication::translate("MetricCard", form).arg(decimalText(*value, 0) + unit)
        : QString();
}

} // namespace

QString MetricCard::highText() const
{
    return extremeText(QT_TRANSLATE_NOOP("MetricCard", "H: %1"), high, unit);
}

QString MetricCard::lowText() const
{
    return extremeText(QT_TRANSLATE_NOOP("MetricCard", "L: %1"), low, unit);
}
