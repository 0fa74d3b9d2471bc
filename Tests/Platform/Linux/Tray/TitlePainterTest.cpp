#include "Platform/Linux/Tray/TitlePainter.h"
#include "Support/TestMain.h"

#include <QtTest>

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

} // namespace

class TitlePainterTest : public QObject {
    Q_OBJECT

private slots:
    void keepsItsPlaceWhileDigitsChange()
    {
        const auto paint = [this](const QString &text) {
            return m_painter.wide({text, Qt::red, QStringLiteral("100%")}, 24, 1.0);
        };
        for (const QString &text : {QStringLiteral("0%"), QStringLiteral("100%")})
            QCOMPARE(paint(text).width(), paint(QStringLiteral("42%")).width());
        QCOMPARE(inkOf(paint(QStringLiteral("11%"))).right(),
                 inkOf(paint(QStringLiteral("88%"))).right());
    }

    void fillsASquare()
    {
        QVERIFY(!m_painter.square({}, 0).isNull());
        for (const char *text : {"7%", "100%", "12345 RPM", "N/A"}) {
            for (const int side : {16, 22, 24, 48, 64}) {
                const QString title = QString::fromLatin1(text);
                const QImage image = m_painter.square({title, Qt::red, title}, side);
                QCOMPARE(image.size(), QSize(side, side));
                const QRect ink = inkOf(image);
                QVERIFY(ink.width() >= side * 6 / 10 && ink.height() >= side * 2 / 10);
                const QPoint offset = ink.center() - image.rect().center();
                QVERIFY(offset.manhattanLength() <= 2 + side / 5);
            }
        }
    }

private:
    TitlePainter m_painter;
};

METERKIN_TEST(TitlePainterTest);
#include "TitlePainterTest.moc"
