#include "Support/Contrast.h"
#include "Support/TestMain.h"
#include "Views/ViewEngine.h"

#include <QQmlComponent>
#include <QtTest>

#include <memory>

class ThemeTest : public QObject {
    Q_OBJECT

private slots:
    void keepsContrast_data()
    {
        QTest::addColumn<bool>("dark");
        QTest::addColumn<QStringList>("colors");
        QTest::addColumn<double>("least");
        const QStringList texts{QStringLiteral("primary"), QStringLiteral("secondary"),
                                QStringLiteral("orange"),  QStringLiteral("green"),
                                QStringLiteral("yellow"),  QStringLiteral("red"),
                                QStringLiteral("accent")};
        for (const bool dark : {false, true}) {
            QTest::addRow("texts, dark %d", dark) << dark << texts << 4.5;
            QTest::addRow("controls, dark %d", dark)
                << dark << QStringList(QStringLiteral("controlBorder")) << 3.0;
        }
    }
    void keepsContrast()
    {
        QFETCH(bool, dark);
        QFETCH(QStringList, colors);
        QFETCH(double, least);
        ViewEngine engine;
        QQmlComponent component(&engine);
        component.setData("import QtQml; import Meterkin.Views; QtObject {"
                          "property QtObject theme: Theme }",
                          QUrl());
        const std::unique_ptr<QObject> holder(component.create());
        const auto *theme = holder->property("theme").value<QObject *>();
        engine.appearance()->setDark(dark); // follows while it is in use
        const auto window = theme->property("windowBackground").value<QColor>();
        const auto control = theme->property("controlBackground").value<QColor>();
        QCOMPARE(luminance(window) < 0.5, dark);
        for (const QString &name : colors) {
            const auto color = theme->property(qPrintable(name)).value<QColor>();
            for (const QColor &background : {window, control})
                QVERIFY2(contrast(color, background) >= least,
                         qPrintable(
                             QStringLiteral("%1: %2").arg(name).arg(contrast(color, background))));
        }
        const auto on = theme->property("textOnAccent").value<QColor>();
        QVERIFY(contrast(on, theme->property("accent").value<QColor>()) >= 4.5);
    }
};

METERKIN_TEST(ThemeTest);
#include "ThemeTest.moc"
