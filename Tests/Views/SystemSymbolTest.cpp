#include "Views/Controls/SystemSymbol.h"
#include "Support/TestMain.h"

#include <QPainter>
#include <QtTest>

class SystemSymbolTest : public QObject {
    Q_OBJECT

private slots:
    void draws_data()
    {
        QTest::addColumn<bool>("known");
        for (const char *name :
             {"gauge.with.dots.needle.33percent", "gauge.with.dots.needle.bottom.50percent",
              "gearshape", "power", "arrow.up", "arrow.down", "arrow.right", "slider.horizontal.3",
              "bell", "bell.fill", "info.circle", "memorychip", "fan.fill", "chevron.down",
              "chevron.up", "checkmark", "xmark"})
            QTest::newRow(name) << true;
        QTest::newRow("no such symbol") << false;
    }
    void draws()
    {
        QFETCH(bool, known);
        SystemSymbol symbol;
        symbol.setName(QString::fromLatin1(QTest::currentDataTag()));
        symbol.setColor(Qt::red);
        QImage image(symbol.size().toSize(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        symbol.paint(&painter);
        const QRect inside = image.rect().adjusted(1, 1, -1, -1);
        int covered = 0;
        for (int i = 0; i < image.width() * image.height(); ++i) {
            const QPoint place(i % image.width(), i / image.width());
            const QColor color = image.pixelColor(place);
            covered += color.alpha() > 127 ? 1 : 0;
            QVERIFY(color.alpha() == 0 || (inside.contains(place) && color.rgb() == 0xffff0000));
        }
        QCOMPARE(covered > 10, known);
    }
};

METERKIN_TEST(SystemSymbolTest);
#include "SystemSymbolTest.moc"
