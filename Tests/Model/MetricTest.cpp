#include "Model/DecimalText.h"
#include "Model/SystemMetric.h"
#include "Model/ThresholdTier.h"
#include "Support/TestMain.h"

#include <QtTest>

#include <clocale>
#include <limits>

using OptionalDouble = std::optional<double>;
using Limits = std::numeric_limits<double>;

/// Kinds, their texts and the tier rule.
class MetricTest : public QObject {
    Q_OBJECT

private slots:
    void rawValues()
    {
        QStringList titles;
        for (const SystemMetric metric : allMetrics) {
            titles << titleOf(metric);
            QCOMPARE(metricFromRawValue(titles.last()), std::optional(metric));
        }
        QCOMPARE(titles.join(u'|'), QStringLiteral("Fan Speed|Memory|CPU Usage"));
        for (const char16_t *unknown : {u"memory", u"Memory ", u""})
            QCOMPARE(metricFromRawValue(unknown), std::nullopt);
    }

    void texts_data()
    {
        QTest::addColumn<OptionalDouble>("value");
        QTest::addColumn<QString>("number"); // empty: none
        const auto row = [](const char *number, OptionalDouble value) {
            QTest::addRow("%g", value.value_or(-1.0)) << value << QString::fromLatin1(number);
        };
        row("", {});
        row("", Limits::quiet_NaN());
        row("", Limits::infinity());
        row("2", 2.5); // halves go to the even number
        row("4", 3.5);
        row("12346", 12345.6);
        row("0", -0.4);
        const QString digits = QString::number(-Limits::max(), 'f', 0);
        row(digits.toLatin1().constData(), -Limits::max());
    }
    void texts()
    {
        QFETCH(OptionalDouble, value);
        QFETCH(QString, number);
        const bool isAbsent = number.isEmpty();
        QCOMPARE(valueText(SystemMetric::fanSpeed, value),
                 isAbsent ? QStringLiteral("N/A") : number + QStringLiteral(" RPM"));
        for (const SystemMetric metric : {SystemMetric::memoryUsage, SystemMetric::cpuUsage})
            QCOMPARE(valueText(metric, value), isAbsent ? QStringLiteral("N/A") : number + u'%');
    }

    void decimals()
    {
        // Where the system has such a locale, its comma must not show.
        for (const char *locale : {"C", "de_DE.UTF-8", "fr_FR.UTF-8"}) {
            std::setlocale(LC_NUMERIC, locale);
            QCOMPARE(decimalText(8.0, 1), QStringLiteral("8.0"));
            QCOMPARE(decimalText(0.25, 1), QStringLiteral("0.2"));
            QCOMPARE(decimalText(37.45, 1), QStringLiteral("37.5"));
            QCOMPARE(decimalText(-12.34, 1), QStringLiteral("-12.3"));
            QCOMPARE(decimalText(-0.04, 1), QStringLiteral("0.0"));
        }
        std::setlocale(LC_NUMERIC, "C");
    }

    void tiers_data()
    {
        QTest::addColumn<OptionalDouble>("value");
        QTest::addColumn<QList<double>>("limits");
        QTest::addColumn<ThresholdTier>("tier");
        using Tier = ThresholdTier;
        const QList<double> limits{2000.0, 4000.0};
        const QList<double> swapped{90.0, 70.0};
        QTest::newRow("below green") << OptionalDouble(1999.9) << limits << Tier::green;
        QTest::newRow("at green") << OptionalDouble(2000.0) << limits << Tier::yellow;
        QTest::newRow("below yellow") << OptionalDouble(3999.9) << limits << Tier::yellow;
        QTest::newRow("at yellow") << OptionalDouble(4000.0) << limits << Tier::red;
        QTest::newRow("swapped, between") << OptionalDouble(80.0) << swapped << Tier::green;
        QTest::newRow("swapped, above") << OptionalDouble(95.0) << swapped << Tier::red;
        QTest::newRow("absent") << OptionalDouble() << QList{-1.0, -1.0} << Tier::green;
    }
    void tiers()
    {
        QFETCH(OptionalDouble, value);
        QFETCH(QList<double>, limits);
        QTEST(tierOf(value, {limits.first(), limits.last()}), "tier");
    }
};

METERKIN_TEST(MetricTest);
#include "MetricTest.moc"
