#include "Views/Controls/SystemSymbol.h"
#include "Support/TestMain.h"

#include <QDir>
#include <QPainter>
#include <QtTest>

class SystemSymbolTest : public QObject {
    Q_OBJECT

private slots:
    void drawsInItsColorAndPlace()
    {
        QStringList names = QDir(QStringLiteral(":/Meterkin/Views/symbols")).entryList();
        QVERIFY(names.size() > 10);
        for (const QString &file : names << QStringLiteral("no such symbol.svg")) {
            SystemSymbol symbol;
            symbol.setName(file.chopped(4));
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
                const bool isRight = inside.contains(place) && color.rgb() == 0xffff0000;
                QVERIFY2(isRight || color.alpha() == 0, qPrintable(file));
            }
            QCOMPARE(covered > 10, file != names.last());
        }
    }
};

METERKIN_TEST(SystemSymbolTest);
#include "SystemSymbolTest.moc"
