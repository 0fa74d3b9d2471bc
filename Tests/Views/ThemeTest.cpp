#include "Support/Contrast.h"
#include "Support/TestMain.h"
#include "Views/ViewEngine.h"

#include <QQmlComponent>
#include <QtTest>

#include <memory>

namespace {

struct ThemeHolder {
    ViewEngine engine;
    std::unique_ptr<QObject> holder = [this] {
        QQmlComponent component(&engine);
        component.setData("import QtQml; import Meterkin.Views; QtObject {"
                          "property QtObject theme: Theme }",
                          QUrl());
        return std::unique_ptr<QObject>(component.create());
    }();
    const QObject *theme = holder->property("theme").value<QObject *>();

    QColor color(const char *name) const { return theme->property(name).value<QColor>(); }
};

} // namespace

class ThemeTest : public QObject {
    Q_OBJECT

private slots:
    void keepsContrast_data()
    {
        QTest::addColumn<bool>("dark");
        QTest::addColumn<QStringList>("colors");
        QTest::addColumn<double>("least");
        const QString names = QStringLiteral("primary secondary orange green yellow red accent");
        for (const bool dark : {false, true}) {
            QTest::addRow("texts, dark %d", dark) << dark << names.split(u' ') << 4.5;
            QTest::addRow("controls, dark %d", dark)
                << dark << QStringList(QStringLiteral("controlBorder")) << 3.0;
        }
    }
    void keepsContrast()
    {
        QFETCH(bool, dark);
        QFETCH(QStringList, colors);
        QFETCH(double, least);
        const ThemeHolder theme;
        theme.engine.appearance()->setDark(dark); // follows while it is in use
        const QColor window = theme.color("windowBackground");
        const QColor control = theme.color("controlBackground");
        QCOMPARE(luminance(window) < 0.5, dark);
        for (const QString &name : colors) {
            const QColor color = theme.color(qPrintable(name));
            for (const QColor &background : {window, control})
                QVERIFY2(contrast(color, background) >= least,
                         qPrintable(
                             QStringLiteral("%1: %2").arg(name).arg(contrast(color, background))));
        }
        QVERIFY(contrast(theme.color("textOnAccent"), theme.color("accent")) >= 4.5);
    }
};

METERKIN_TEST(ThemeTest);
#include "ThemeTest.moc"
