#include "Views/Controls/SystemSymbol.h"
#include "Support/TestMain.h"
#include "Views/ViewEngine.h"

#include <QPainter>
#include <QQmlComponent>
#include <QtTest>

#include <memory>

namespace {

/// Has one symbol: 20 points wide and 5 high, opaque in its left half.
class DrawingDesktop : public DesktopAppearance {
public:
    bool isDark() const override { return false; }
    double textScale() const override { return 1.0; }
    QImage symbol(const QString &name, double pointSize, double scale) const override
    {
        if (name != QStringLiteral("only.here") || pointSize != 8.0 || scale != 2.0)
            return {};
        QImage image(40, 10, QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(scale);
        image.fill(Qt::transparent);
        QPainter(&image).fillRect(QRectF(0, 0, 10, 5), Qt::black);
        return image;
    }
};

} // namespace

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

    void paintsTheSystemsDrawing()
    {
        const DrawingDesktop desktop;
        ViewEngine engine;
        engine.appearance()->follow(desktop);
        QQmlComponent component(&engine);
        component.setData("import Meterkin.Views; SystemSymbol {"
                          "name: 'only.here'; pointSize: 8; color: '#ff0000' }",
                          QUrl());
        const std::unique_ptr<QObject> object(component.create());
        auto *symbol = qobject_cast<SystemSymbol *>(object.get());
        QVERIFY(symbol != nullptr);
        QCOMPARE(symbol->size(), QSizeF(10, 10));
        QImage image(20, 20, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.scale(2, 2); // as Qt does on a screen of two pixels a point
        symbol->paint(&painter);
        // As wide as its square, and in the middle of its height.
        QCOMPARE(image.pixel(1, 10), 0xffff0000U);
        QCOMPARE(image.pixel(8, 10), 0xffff0000U);
        for (const QPoint empty : {QPoint(12, 10), QPoint(5, 5), QPoint(5, 14)})
            QCOMPARE(image.pixel(empty), 0U);
    }
};

METERKIN_TEST(SystemSymbolTest);
#include "SystemSymbolTest.moc"
