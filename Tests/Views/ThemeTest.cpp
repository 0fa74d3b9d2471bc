#include "Support/Contrast.h"
#include "Support/TestMain.h"
#include "Views/ViewEngine.h"

#include <QMetaProperty>
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

class ColorfulDesktop : public DesktopAppearance {
public:
    bool isDark() const override { return false; }
    double textScale() const override { return 1.0; }
    SystemColors systemColors() const override { return colors; }

    SystemColors colors;
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

    void takesTheSystemsColors()
    {
        const QMetaObject &names = SystemColors::staticMetaObject;
        const ThemeHolder theme;
        ColorfulDesktop desktop;
        theme.engine.appearance()->follow(&desktop);
        for (int i = 0; i < names.propertyCount(); ++i) {
            const char *name = names.property(i).name();
            const QColor own = theme.color(name);
            const QColor system(1, 2, i, 100);
            QVERIFY2(own.isValid() && own != system, name);
            names.property(i).writeOnGadget(&desktop.colors, system);
            emit desktop.changed();
            QCOMPARE(theme.color(name), system);
            names.property(i).writeOnGadget(&desktop.colors, QColor());
            emit desktop.changed();
            QCOMPARE(theme.color(name), own);
        }
    }
};

METERKIN_TEST(ThemeTest);
#include "ThemeTest.moc"
