#include "Model/DecimalText.h"
#include "Model/MetricTraits.h"
#include "Support/TestMain.h"

#include <QtTest>

#include <clocale>
#include <limits>

using namespace Qt::StringLiterals;
using OptionalDouble = std::optional<double>;
using Limits = std::numeric_limits<double>;

/// The metrics' texts and the tier rule.
class MetricTest : public QObject {
    Q_OBJECT

private slots:
    void texts()
    {
        for (const auto &[value, text] :
             {std::pair(OptionalDouble(), u"N/A"_s),
              {Limits::quiet_NaN(), u"N/A"_s},
              {Limits::infinity(), u"N/A"_s},
              {2.5, u"2 RPM"_s}, // halves go to the even number
              {3.5, u"4 RPM"_s},
              {-0.4, u"0 RPM"_s},
              {-Limits::max(), QString::number(-Limits::max(), 'f', 0) + u" RPM"_s}})
            QCOMPARE(valueText(SystemMetric::FanSpeed, value), text);
        QCOMPARE(valueText(SystemMetric::CpuUsage, 37.45, 1), u"37.5%"_s);
    }

    void decimals()
    {
        // Where the system has such a locale, its comma must not show.
        for (const char *locale : {"C", "de_DE.UTF-8"}) {
            std::setlocale(LC_NUMERIC, locale);
            QCOMPARE(decimalText(8.0, 1), u"8.0"_s);
            QCOMPARE(decimalText(0.25, 1), u"0.2"_s);
            QCOMPARE(decimalText(-12.34, 1), u"-12.3"_s);
            QCOMPARE(decimalText(-0.04, 1), u"0.0"_s);
        }
        std::setlocale(LC_NUMERIC, "C");
    }

    void tiers()
    {
        using Tier = ThresholdTier;
        constexpr Thresholds Usual{2000.0, 4000.0};
        constexpr Thresholds Swapped{90.0, 70.0};
        QCOMPARE(tierOf(1999.9, Usual), Tier::Green);
        QCOMPARE(tierOf(2000.0, Usual), Tier::Yellow);
        QCOMPARE(tierOf(3999.9, Usual), Tier::Yellow);
        QCOMPARE(tierOf(4000.0, Usual), Tier::Red);
        QCOMPARE(tierOf(80.0, Swapped), Tier::Green);
        QCOMPARE(tierOf(95.0, Swapped), Tier::Red);
        QCOMPARE(tierOf({}, {-1.0, -1.0}), Tier::Green);
    }
};

METERKIN_TEST(MetricTest);
#include "MetricTest.moc"
