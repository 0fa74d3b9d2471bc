#include "Platform/Linux/Tray/TitlePainter.h"
#include "Support/TestMain.h"

#include <QtTest>

using namespace Qt::StringLiterals;

/// Where anything is drawn; empty when nothing is.
static QRect inkOf(const QImage &image)
{
    QRect ink;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qAlpha(image.pixel(x, y)) > 40)
                ink |= QRect(x, y, 1, 1);
    return ink;
}

class TitlePainterTest : public QObject {
    Q_OBJECT

private slots:
    void keepsItsPlaceWhileDigitsChange()
    {
        const auto paint = [this](const QString &text) {
            return m_painter.wide({text, Qt::red, u"100%"_s}, 24, 1.0);
        };
        QCOMPARE(paint(u"0%"_s).width(), paint(u"100%"_s).width());
        QCOMPARE(inkOf(paint(u"11%"_s)).right(), inkOf(paint(u"88%"_s)).right());
    }

    void fillsASquare()
    {
        QVERIFY(!m_painter.square({}, 0).isNull());
        for (const QString &text : {u"7%"_s, u"100%"_s, u"12345 RPM"_s}) {
            for (const int side : {16, 24, 64}) {
                const QRect ink = inkOf(m_painter.square({text, Qt::red, text}, side));
                QVERIFY(ink.width() >= side * 6 / 10 && ink.height() >= side * 2 / 10);
            }
        }
    }

private:
    TitlePainter m_painter;
};

METERKIN_TEST(TitlePainterTest);
#include "TitlePainterTest.moc"
