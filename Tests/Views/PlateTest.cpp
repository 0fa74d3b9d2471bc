#include "Views/Controls/Plate.h"
#include "Support/TestMain.h"

#include <QPainter>
#include <QtTest>

class PlateTest : public QObject {
    Q_OBJECT

private slots:
    void linesAllSidesAlikeAtEveryScale()
    {
        // The scale, and how thick its hairlines are.
        for (const auto &[scale, line] :
             {std::pair(1.0, 1), {1.25, 1}, {1.5, 1}, {1.75, 1}, {2.0, 2}, {3.0, 3}}) {
            Plate plate;
            plate.setSize({41.0, 23.0});
            plate.setProperty("radius", 6.0);
            plate.setProperty("lineColor", QColor(Qt::red));
            plate.setProperty("lineWidth", 1.0);
            QImage image(200, 200, QImage::Format_ARGB32_Premultiplied);
            image.fill(Qt::transparent);
            image.setDevicePixelRatio(scale);
            QPainter painter(&image);
            painter.setRenderHint(QPainter::Antialiasing);
            painter.translate(10.3, 7.7);
            plate.paint(&painter);
            // Through the middle in both directions: two lines of whole pixels and nothing else.
            const QPoint middle = (QPointF(30.8, 19.2) * scale).toPoint();
            for (const QPoint step : {QPoint(1, 0), QPoint(0, 1)}) {
                int covered = 0;
                for (int i = 0; i < 200; ++i) {
                    const QRgb pixel =
                        image.pixel(step.x() != 0 ? QPoint(i, middle.y()) : QPoint(middle.x(), i));
                    QVERIFY(pixel == 0 || pixel == QColor(Qt::red).rgba());
                    covered += pixel != 0 ? 1 : 0;
                }
                QCOMPARE(covered, 2 * line);
            }
        }
    }
};

METERKIN_TEST(PlateTest);
#include "PlateTest.moc"
