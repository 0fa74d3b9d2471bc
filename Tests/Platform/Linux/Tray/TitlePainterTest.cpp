#include "Platform/Linux/Tray/TitlePainter.h"
#include "Support/TestMain.h"

#include <QtTest>

#include <set>

namespace {

/// Where anything is drawn; empty when nothing is.
QRect inkOf(const QImage &image)
{
    QRect ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) > 40)
                ink |= QRect(x, y, 1, 1);
        }
    }
    return ink;
}

const QColor red(0xe5, 0x48, 0x4d);

AttributedTitle percent(int value)
{
    return {QStringLiteral("%1%").arg(value), red, QStringLiteral("100%")};
}

} // namespace

class TitlePainterTest : public QObject {
    Q_OBJECT

private slots:
    void standsStillWhileDigitsChange()
    {
        std::set<int> widths;
        for (int value = 0; value <= 100; ++value)
            widths.insert(m_painter.wide(percent(value), 24, 1.0).width());
        QCOMPARE(widths.size(), 1U);
        // The sign after the digits stays when a narrow digit takes the place of a wide one.
        QCOMPARE(inkOf(m_painter.wide(percent(11), 24, 1.0)).right(),
                 inkOf(m_painter.wide(percent(88), 24, 1.0)).right());
    }

    void drawsLegibly_data()
    {
        QTest::addColumn<double>("leastInk"); // share of the side, in height
        QTest::newRow("7%") << 0.3;
        QTest::newRow("100%") << 0.22;
        QTest::newRow("1850 RPM") << 0.6;
        QTest::newRow("12345 RPM") << 0.55;
        QTest::newRow("N/A") << 0.3;
    }
    void drawsLegibly()
    {
        QFETCH(double, leastInk);
        const QString text = QString::fromLatin1(QTest::currentDataTag());
        for (const int side : {16, 19, 22, 24, 26, 32, 48, 64}) {
            const QImage image = m_painter.square({text, red, text}, side);
            QCOMPARE(image.size(), QSize(side, side));
            const QRect ink = inkOf(image);
            QVERIFY2(ink.height() >= static_cast<int>(leastInk * side),
                     qPrintable(QStringLiteral("%1 of %2").arg(ink.height()).arg(side)));
            QVERIFY(ink.width() >= side * 6 / 10);
            // In the middle of the square, give or take a pixel of rounding.
            QVERIFY(std::abs(ink.center().x() - side / 2) <= 1 + side / 10);
            QVERIFY(std::abs(ink.center().y() - side / 2) <= 1 + side / 10);
        }
    }

    void survivesOddTitles()
    {
        for (const QString &text :
             {QString(), QStringLiteral(" "), QStringLiteral("1 2 3"), QString(500, u'8')}) {
            for (const int side : {0, 1, 22}) {
                QVERIFY(!m_painter.square({text, red, QString()}, side).isNull());
                QVERIFY(!m_painter.wide({text, red, QString()}, side, 1.0).isNull());
            }
        }
    }

private:
    TitlePainter m_painter;
};

METERKIN_TEST(TitlePainterTest);
#include "TitlePainterTest.moc"
