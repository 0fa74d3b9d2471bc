#include "Platform/Linux/TitlePainter.h"
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

QColor strongestColor(const QImage &image)
{
    QRgb strongest = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) > qAlpha(strongest))
                strongest = image.pixel(x, y);
        }
    }
    return QColor::fromRgb(strongest);
}

const QColor red(0xe5, 0x48, 0x4d);

} // namespace

class TitlePainterTest : public QObject {
    Q_OBJECT

private slots:
    void widthStaysWhileDigitsChange()
    {
        std::set<int> widths;
        for (int percent = 0; percent <= 100; ++percent)
            widths.insert(
                m_painter
                    .wide({QStringLiteral("%1%").arg(percent), red, QStringLiteral("100%")}, 24,
                          1.0)
                    .width());
        QCOMPARE(widths.size(), 1U);
    }

    void digitsStandInCells()
    {
        // The sign after the digits must not move when a narrow digit takes the place of a wide
        // one.
        const auto right = [this](const QString &text) {
            return inkOf(m_painter.wide({text, red, QStringLiteral("100%")}, 24, 1.0)).right();
        };
        QCOMPARE(right(QStringLiteral("11%")), right(QStringLiteral("88%")));
    }

    void drawsLegibly_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("side");
        QTest::addColumn<double>("leastInk"); // share of the side, in height
        for (const int side : {16, 19, 22, 24, 26, 32, 48, 64}) {
            const auto row = [side](const char *text) -> QTestData & {
                return QTest::addRow("%s at %d", text, side) << QString::fromLatin1(text) << side;
            };
            row("7%") << 0.3;
            row("42%") << 0.3;
            row("100%") << 0.22;
            row("1850 RPM") << 0.6;
            row("12345 RPM") << 0.55;
            row("N/A") << 0.3;
        }
    }
    void drawsLegibly()
    {
        QFETCH(QString, text);
        QFETCH(int, side);
        QFETCH(double, leastInk);
        const QImage image = m_painter.square({text, red, text}, side);
        QCOMPARE(image.size(), QSize(side, side));
        const QRect ink = inkOf(image);
        QVERIFY2(ink.height() >= static_cast<int>(leastInk * side),
                 qPrintable(QString::number(ink.height())));
        QVERIFY(ink.width() >= side * 6 / 10);
        // The middle of the ink is the middle of the square, give or take a pixel of rounding.
        QVERIFY(std::abs(ink.center().x() - side / 2) <= 1 + side / 10);
        QVERIFY(std::abs(ink.center().y() - side / 2) <= 1 + side / 10);
    }

    void survivesOddTitles_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << QString();
        QTest::newRow("blank") << QStringLiteral(" ");
        QTest::newRow("three words") << QStringLiteral("1 2 3");
        QTest::newRow("long") << QString(500, u'8');
    }
    void survivesOddTitles()
    {
        QFETCH(QString, text);
        const AttributedTitle title{text, red, QString()};
        for (const int side : {0, 1, 22}) {
            QVERIFY(!m_painter.square(title, side).isNull());
            QVERIFY(!m_painter.wide(title, side, 1.0).isNull());
        }
    }

    void usesTheTitlesColor()
    {
        const AttributedTitle title{QStringLiteral("88%"), red, QStringLiteral("100%")};
        QCOMPARE(strongestColor(m_painter.square(title, 64)), red);
        QCOMPARE(strongestColor(m_painter.wide(title, 48, 2.0)), red);
        QCOMPARE(strongestColor(m_painter.symbol(red, 48)), red);
    }

private:
    TitlePainter m_painter;
};

METERKIN_TEST(TitlePainterTest);
#include "TitlePainterTest.moc"
