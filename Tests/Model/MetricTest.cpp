#include "Model/SystemMetric.h"
#include "Model/ThresholdTier.h"
#include "Support/TestMain.h"

#include <QtTest>

#include <limits>

using OptionalDouble = std::optional<double>;

/// Kinds, their texts and the tier rule.
class MetricTest : public QObject {
    Q_OBJECT

private slots:
    void rawValues_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("index"); // in the list of all; -1 for none
        QTest::newRow("fan") << QStringLiteral("Fan Speed") << 0;
        QTest::newRow("memory") << QStringLiteral("Memory") << 1;
        QTest::newRow("cpu") << QStringLiteral("CPU Usage") << 2;
        QTest::newRow("lower case") << QStringLiteral("memory") << -1;
        QTest::newRow("blank") << QStringLiteral("Memory ") << -1;
        QTest::newRow("empty") << QString() << -1;
    }
    void rawValues()
    {
        QFETCH(QString, text);
        QFETCH(int, index);
        const std::optional<SystemMetric> metric = metricFromRawValue(text);
        QCOMPARE(metric.has_value(), index >= 0);
        if (metric) {
            QCOMPARE(*metric, allMetrics.at(static_cast<std::size_t>(index)));
            QCOMPARE(titleOf(*metric), text);
        }
    }

    void texts_data()
    {
        QTest::addColumn<OptionalDouble>("value");
        QTest::addColumn<QString>("fan");
        QTest::addColumn<QString>("percent");
        const auto row = [](const char *name, OptionalDouble value, const QString &number) {
            QTest::newRow(name) << value << number + QStringLiteral(" RPM")
                                << number + QStringLiteral("%");
        };
        const QString none = QStringLiteral("N/A");
        QTest::newRow("absent") << OptionalDouble() << none << none;
        QTest::newRow("not a number")
            << OptionalDouble(std::numeric_limits<double>::quiet_NaN()) << none << none;
        QTest::newRow("infinite") << OptionalDouble(std::numeric_limits<double>::infinity()) << none
                                  << none;
        row("zero", 0.0, QStringLiteral("0"));
        row("half to even, down", 2.5, QStringLiteral("2"));
        row("half to even, up", 3.5, QStringLiteral("4"));
        row("below a half", 99.4999, QStringLiteral("99"));
        row("thousands", 12345.6, QStringLiteral("12346"));
        row("negative", -12.6, QStringLiteral("-13"));
        row("negative to zero", -0.4, QStringLiteral("0"));
        row("huge", 1e22, QStringLiteral("10000000000000000000000"));
    }
    void texts()
    {
        QFETCH(OptionalDouble, value);
        QTEST(valueText(SystemMetric::fanSpeed, value), "fan");
        QTEST(valueText(SystemMetric::memoryUsage, value), "percent");
        QTEST(valueText(SystemMetric::cpuUsage, value), "percent");
    }

    void largestValueKeepsItsUnit()
    {
        const QString text = valueText(SystemMetric::fanSpeed, -std::numeric_limits<double>::max());
        QCOMPARE(text.size(), 1 + 309 + 4);
        QVERIFY(text.endsWith(QStringLiteral(" RPM")));
    }

    void tiers_data()
    {
        QTest::addColumn<OptionalDouble>("value");
        QTest::addColumn<double>("green");
        QTest::addColumn<double>("yellow");
        QTest::addColumn<ThresholdTier>("tier");
        const auto row = [](const char *name, OptionalDouble value, Thresholds thresholds,
                            ThresholdTier tier) {
            QTest::newRow(name) << value << thresholds.green << thresholds.yellow << tier;
        };
        row("below green", 1999.9, {2000.0, 4000.0}, ThresholdTier::green);
        row("at green", 2000.0, {2000.0, 4000.0}, ThresholdTier::yellow);
        row("below yellow", 3999.9, {2000.0, 4000.0}, ThresholdTier::yellow);
        row("at yellow", 4000.0, {2000.0, 4000.0}, ThresholdTier::red);
        row("swapped, between", 80.0, {90.0, 70.0}, ThresholdTier::green);
        row("swapped, above", 95.0, {90.0, 70.0}, ThresholdTier::red);
        row("zero, green at zero", 0.0, {0.0, 80.0}, ThresholdTier::yellow);
        row("absent", std::nullopt, {-1.0, -1.0}, ThresholdTier::green);
    }
    void tiers()
    {
        QFETCH(OptionalDouble, value);
        QFETCH(double, green);
        QFETCH(double, yellow);
        QTEST(tierOf(value, {green, yellow}), "tier");
    }
};

METERKIN_TEST(MetricTest);
#include "MetricTest.moc"
