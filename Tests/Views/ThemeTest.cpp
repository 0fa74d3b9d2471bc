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
            const QColor window = color("windowBackground");
            const QColor card = blended(color("card"), window);
            const QColor control = blended(color("control"), card);
            for (const auto &[text, background] : {std::pair("primary", control),
                                                   {"secondary", control},
                                                   {"danger", control},
                                                   {"warning", card},
                                                   {"highlight", card},
                                                   {"highlight", window},
                                                   {"secondary", window}})
                QVERIFY2(contrast(color(text), background) >= 4.5, text);
            for (const char *drawing : {"green", "yellow", "red", "orange"})
                QVERIFY2(contrast(color(drawing), card) >= 3.0, drawing);
            QVERIFY(contrast(color("orange"), window) >= 3.0);
            QVERIFY(contrast(color("textOnAccent"), color("accent")) >= 4.5);
            for (const char *track : {"accent", "emptyTrack"})
                QVERIFY2(contrast(color("knob"), color(track)) >= 3.0, track);
        }
    }
};

METERKIN_TEST(ThemeTest);
#include "ThemeTest.moc"
