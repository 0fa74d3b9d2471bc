#include "Views/Controls/SystemSymbol.h"
#include "Support/TestMain.h"

#include <QDir>
#include <QPainter>
#include <QtTest>

class SystemSymbolTest : public QObject {
    Q_OBJECT

private slots:
    void drawsInItsColor()
    {
        QStringList names = QDir(QStringLiteral(":/Meterkin/Views/symbols")).entryList();
        QVERIFY(names.size() > 10);
        for (const QString &file : names << QStringLiteral("no such symbol.svg")) {
            const int covered = pixelsCovered(file.chopped(4), false);
            QVERIFY2((covered > 10) == (file != names.last()), qPrintable(file));
            if (file.startsWith(QStringLiteral("gauge")))
                QVERIFY(pixelsCovered(file.chopped(4), true) > covered);
        }
    }

private:
    /// More than half; -1 where one is in another colour.
    static int pixelsCovered(const QString &name, bool isSemibold)
    {
        SystemSymbol symbol;
        symbol.setName(name);
        symbol.setSemibold(isSemibold);
        symbol.setColor(Qt::red);
        QImage image(symbol.size().toSize(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        symbol.paint(&painter);
        int covered = 0;
        for (int i = 0; i < image.width() * image.height(); ++i) {
            const QRgb color = image.pixel(i % image.width(), i / image.width());
            if (qGreen(color) != 0 || qBlue(color) != 0)
                return -1;
            covered += qAlpha(color) > 127 ? 1 : 0;
        }
        return covered;
    }
};

METERKIN_TEST(SystemSymbolTest);
#include "SystemSymbolTest.moc"
