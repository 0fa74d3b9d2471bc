#include "Model/TierColors.h"
#include "Platform/Linux/Display/Server.h"
#include "Platform/Linux/Tray/FloatingStrip.h"
#include "Platform/Linux/Tray/ItemMenu.h"
#include "Platform/Linux/Tray/Title/Color.h"
#include "Support/Contrast.h"
#include "Support/ScriptedStore.h"
#include "Support/TestMain.h"

#include <QBitmap>
#include <QGuiApplication>
#include <QScreen>
#include <QtTest>

namespace {

using namespace Qt::StringLiterals;

TrayContent titled(const QString &text, const QString &widest = u"100%"_s)
{
    return {{text, Qt::red, widest}, u"meterkin: "_s + text};
}

/// A strip on the screen.
struct Strip : FloatingStrip {
    Strip(TitlePainter &painter, ScriptedStore &store)
        : FloatingStrip(painter, store)
    {
        setContent(titled(u"42%"_s));
        attach();
    }
};

} // namespace

/// The title's picture, and the small windows that stand in for a panel's own: strip and menu.
class PanelWindowsTest : public QObject {
    Q_OBJECT

private slots:
    void titleIsLegibleInASquare()
    {
        QVERIFY(!m_painter.square({}, 0).isNull());
        for (const QString &text : {u"7%"_s, u"100%"_s, u"N/A"_s, u"1850 RPM"_s, u"12345 RPM"_s}) {
            for (const int side : {17, 19, 22, 26, 64}) {
                const QImage image = m_painter.square({text, Qt::red, text}, side);
                const QRegion ink(QBitmap::fromImage(image.createAlphaMask()));
                QVERIFY(ink.boundingRect().width() >= side * 6 / 10);
                // In two lines the letters end where there is a gap between them.
                int lines = 1;
                for (int y = ink.boundingRect().top(); y < ink.boundingRect().bottom(); ++y)
                    lines += ink.intersects(QRect(0, y, side, 1))
                        && !ink.intersects(QRect(0, y + 1, side, 1));
                QVERIFY2(ink.boundingRect().height() >= 7 * lines - 1, qPrintable(text));
            }
        }
    }

    void titleIsLegibleOnItsPanel()
    {
        for (const auto &[panel, isAsInTheDashboard] : {std::pair("#000000", true),
                                                        {"#1c1c1f", true},
                                                        {"#353535", false},
                                                        {"#757575", false},
                                                        {"#808080", false},
                                                        {"#dcdcdc", false},
                                                        {"#ffffff", false}}) {
            for (const SystemColor color :
                 {SystemColor::Green, SystemColor::Yellow, SystemColor::Red}) {
                const QColor bright =
                    QColor::fromRgb(tierColor(static_cast<ThresholdTier>(color), true));
                const QColor shown = titleColor(color, QColor(panel));
                QVERIFY2(contrast(shown, QColor(panel)) >= 4.5, panel);
                QVERIFY(shown == bright || !isAsInTheDashboard);
                QVERIFY(std::abs(shown.hslHue() - bright.hslHue()) < 20 || shown.hslHue() > 340);
            }
        }
        for (const char *panel : {"#f6f5f4", "#eff0f1", "#1c1c1f", "#202428"})
            QVERIFY(contrast(titleColor(SystemColor::Yellow, {}), QColor(panel)) >= 3.0);
    }

    void titleIsBlankWithoutAFont()
    {
        QTemporaryFile settings;
        QVERIFY(settings.open()
                && settings.write("<fontconfig><cachedir>/dev/null</cachedir></fontconfig>") > 0
                && settings.flush());
        qputenv("FONTCONFIG_FILE", settings.fileName().toLocal8Bit());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"title is blank"_s));
        TitlePainter painter;
        const AttributedTitle title{u"42%"_s, Qt::red, u"100%"_s};
        QCOMPARE(painter.square(title, 22).size(), QSize(22, 22));
        QVERIFY(painter.wide(title, 22, 1).width() < m_painter.wide(title, 22, 1).width());
        qunsetenv("FONTCONFIG_FILE");
    }

    void stripStaysWhereItWasLeft()
    {
        for (const char *stored : {"", "120,80", "12;x", "-5000,99999", "2147483647,3"}) {
            ScriptedStore store;
            store.setText(u"stripPosition"_s, QString::fromLatin1(stored));
            Strip strip(m_painter, store);
            const QRect place = strip.geometry();
            QVERIFY(QGuiApplication::primaryScreen()->availableGeometry().contains(place));
            QCOMPARE(place.topLeft() == QPoint(120, 80), QByteArray(stored) == "120,80");
        }
    }

    void stripTellsClickFromDrag()
    {
        ScriptedStore store;
        Strip strip(m_painter, store);
        QSignalSpy clicked(&strip, &TrayHost::clicked);
        QWindow *window = QGuiApplication::topLevelWindows().value(0);
        QCOMPARE(window->title(), u"meterkin: 42%"_s);
        QTest::mouseClick(window, Qt::LeftButton, {}, QPoint(5, 5));
        QCOMPARE(clicked.count(), 1);

        const QPoint before = window->position();
        QTest::mousePress(window, Qt::LeftButton, {}, QPoint(5, 5));
        QTest::mouseMove(window, QPoint(-95, -55));
        QTest::mouseRelease(window, Qt::LeftButton, {}, QPoint(5, 5));
        QCOMPARE(clicked.count(), 1);
        QCOMPARE(window->position(), before - QPoint(100, 60));
        QCOMPARE(store.text(u"stripPosition"_s), u"%1,%2"_s.arg(window->x()).arg(window->y()));
    }

    void stripKeepsItsPlace()
    {
        for (const int offset : {0, -300, -4, 300}) { // of its centre from the screen's
            ScriptedStore store;
            Strip strip(m_painter, store);
            const int middle = QGuiApplication::primaryScreen()->geometry().center().x();
            if (offset != 0) // moved by the window manager
                QGuiApplication::topLevelWindows().value(0)->setPosition(
                    middle + offset - strip.geometry().width() / 2, 200);
            const QRect before = strip.geometry();
            strip.setContent(titled(u"1850 RPM"_s, u"9999 RPM"_s));
            QVERIFY(strip.geometry().width() > before.width());
            QCOMPARE(strip.geometry().left() == before.left(), offset < 0);
            QCOMPARE(strip.geometry().right() == before.right(), offset >= 0);
            strip.setContent(titled(u"7%"_s)); // digits change no width
            QCOMPARE(strip.geometry(), before);
        }
    }

    void menuChooses()
    {
        // Keys, or a click as far from the bottom, and what is chosen.
        for (const auto &[keys, click, expected] :
             {std::tuple(QList{Qt::Key_Tab, Qt::Key_Down, Qt::Key_Space}, QPoint(),
                         QList{MenuAction::OpenSettings}),
              {{Qt::Key_Up, Qt::Key_Down, Qt::Key_Return}, {}, {MenuAction::OpenDashboard}},
              {{Qt::Key_Return, Qt::Key_Down, Qt::Key_Escape}, {}, {}},
              {{}, {20, -15}, {MenuAction::Quit}},
              {{}, {-30, 200}, {}}}) {
            const QRect screen = QGuiApplication::primaryScreen()->geometry();
            auto *menu = new ItemMenu(m_displayServer, screen.bottomRight());
            QList<MenuAction> chosen;
            connect(menu, &ItemMenu::chosen, this, [&](MenuAction one) { chosen.append(one); });
            QSignalSpy destroyed(menu, &QObject::destroyed);
            QVERIFY(QTest::qWaitForWindowExposed(menu));
            QVERIFY(screen.contains(menu->geometry()));
            for (const Qt::Key key : keys)
                QTest::keyClick(menu, key);
            if (keys.isEmpty()) {
                // The release of the click that opened it does nothing.
                QTest::mouseRelease(menu, Qt::LeftButton, {}, QPoint(20, 15));
                QTest::mouseClick(menu, Qt::LeftButton, {}, click + QPoint(0, menu->height()));
            }
            QTRY_COMPARE(destroyed.count(), 1);
            QCOMPARE(chosen, expected);
        }
    }

private:
    DisplayServer m_displayServer;
    TitlePainter m_painter;
};

METERKIN_TEST(PanelWindowsTest);
#include "PanelWindowsTest.moc"
