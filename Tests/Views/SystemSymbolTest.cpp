#include "Views/Controls/SystemSymbol.h"
#include "Support/TestMain.h"
#include "Views/ViewEngine.h"

#include <QDir>
#include <QPainter>
#include <QQmlComponent>
#include <QtTest>

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

QImage drawn(SystemSymbol &symbol, int scale)
{
    QImage image(symbol.size().toSize() * scale, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.scale(scale, scale); // as Qt does on a screen of so many pixels a point
    symbol.paint(&painter);
    return image;
}

} // namespace

class SystemSymbolTest : public QObject {
    Q_OBJECT

private slots:
    void drawsItsOwn()
    {
        QStringList names = QDir(QStringLiteral(":/Meterkin/Views/symbols")).entryList();
        QVERIFY(names.size() > 10);
        for (const QString &file : names << QStringLiteral("no such symbol.svg")) {
            SystemSymbol symbol;
            symbol.setName(file.chopped(4));
            symbol.setColor(Qt::red);
            const QImage image = drawn(symbol, 1);
            const QRect inside = image.rect().adjusted(1, 1, -1, -1);
            int covered = 0;
            for (int i = 0; i < image.width() * image.height(); ++i) {
                const QPoint place(i % image.width(), i / image.width());
                const QColor color = image.pixelColor(place);
                covered += color.alpha() > 127 ? 1 : 0;
                QVERIFY2(color.alpha() == 0
                             || (inside.contains(place) && color.rgb() == 0xffff0000),
                         qPrintable(file));
            }
            QCOMPARE(covered > 10, file != names.last());
        }
    }

    void drawsTheSystems()
    {
        const DrawingDesktop desktop;
        ViewEngine engine;
        engine.appearance()->follow(desktop);
        QQmlComponent component(&engine);
        component.setData("import Meterkin.Views; SystemSymbol {"
                          "name: 'only.here'; pointSize: 8; color: '#ff0000' }",
                          QUrl());
        const std::unique_ptr<QObject> object(component.create());
        const QImage image = drawn(*qobject_cast<SystemSymbol *>(object.get()), 2);
        // As wide as its square of 10 points, and in the middle of its height.
        QCOMPARE(image.size(), QSize(20, 20));
        QCOMPARE(image.pixel(1, 10), 0xffff0000U);
        for (const QPoint empty : {QPoint(12, 10), QPoint(5, 5), QPoint(5, 14)})
            QCOMPARE(image.pixel(empty), 0U);
    }
};

METERKIN_TEST(SystemSymbolTest);
#include "SystemSymbolTest.moc"
