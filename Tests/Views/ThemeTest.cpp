#include "Support/Contrast.h"
#include "Support/TestMain.h"
#include "Views/ViewEngine.h"

#include <QQmlComponent>
#include <QtTest>

class ThemeTest : public QObject {
    Q_OBJECT

private slots:
    void keepsContrast()
    {
        ViewEngine engine;
        QQmlComponent component(&engine);
        component.setData("import QtQml; import Meterkin.Views;"
                          "QtObject { property QtObject theme: Theme }",
                          QUrl());
        const std::unique_ptr<QObject> holder(component.create());
        const auto *theme = holder->property("theme").value<QObject *>();
        const auto color = [theme](const char *name) {
            return theme->property(name).value<QColor>();
        };
        for (const bool dark : {true, false}) {
            engine.appearance()->setDark(dark); // while the theme is in use
            QCOMPARE(luminance(color("windowBackground")) < 0.5, dark);
            for (const char *background : {"windowBackground", "controlBackground"}) {
                for (const char *text :
                     {"primary", "secondary", "orange", "green", "yellow", "red", "accent"})
                    QVERIFY2(contrast(color(text), color(background)) >= 4.5, text);
                QVERIFY(contrast(color("controlBorder"), color(background)) >= 3.0);
            }
            QVERIFY(contrast(color("textOnAccent"), color("accent")) >= 4.5);
        }
    }
};

METERKIN_TEST(ThemeTest);
#include "ThemeTest.moc"
