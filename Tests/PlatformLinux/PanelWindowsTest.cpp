#include "Platform/Linux/FloatingStrip.h"
#include "Platform/Linux/ItemMenu.h"
#include "Support/ScriptedStore.h"
#include "Support/TestMain.h"

#include <QGuiApplication>
#include <QScreen>
#include <QtTest>

namespace {

QWindow *onlyWindow()
{
    const QWindowList windows = QGuiApplication::topLevelWindows();
    return windows.size() == 1 ? windows.first() : nullptr;
}

} // namespace

/// The small windows that stand in for a panel's own: strip and menu.
class PanelWindowsTest : public QObject {
    Q_OBJECT

private slots:
    void init() { QVERIFY(QGuiApplication::topLevelWindows().isEmpty()); }

    void stripStandsWhereItWasLeft_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QPoint>("expected"); // null: the default corner
        QTest::newRow("never moved") << QString() << QPoint();
        QTest::newRow("moved") << QStringLiteral("120,80") << QPoint(120, 80);
        QTest::newRow("damaged") << QStringLiteral("12;x") << QPoint();
        QTest::newRow("of a lost screen") << QStringLiteral("-5000,99999") << QPoint(-1, -1);
        QTest::newRow("beyond integers") << QStringLiteral("99999999999,3") << QPoint();
    }
    void stripStandsWhereItWasLeft()
    {
        QFETCH(QString, stored);
        QFETCH(QPoint, expected);
        ScriptedStore store;
        if (!stored.isEmpty())
            store.setText(QStringLiteral("stripPosition"), stored);
        FloatingStrip strip(m_painter, store);
        strip.setContent(content(QStringLiteral("42%")));
        strip.attach();
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        QVERIFY(screen.contains(strip.geometry()));
        if (expected == QPoint())
            QVERIFY(strip.geometry().center().x() > screen.center().x()
                    && strip.geometry().center().y() > screen.center().y());
        else if (screen.contains(expected))
            QCOMPARE(strip.geometry().topLeft(), expected);
    }

    void stripTellsClickFromDrag()
    {
        ScriptedStore store;
        FloatingStrip strip(m_painter, store);
        QSignalSpy clicked(&strip, &TrayHost::clicked);
        strip.setContent(content(QStringLiteral("42%")));
        strip.attach();
        QWindow *window = onlyWindow();
        QVERIFY(window != nullptr);
        QCOMPARE(window->title(), QStringLiteral("meterkin: 42%"));

        QTest::mouseClick(window, Qt::LeftButton, {}, QPoint(5, 5));
        QCOMPARE(clicked.count(), 1);

        const QPoint before = window->position();
        QTest::mousePress(window, Qt::LeftButton, {}, QPoint(5, 5));
        QTest::mouseMove(window, QPoint(-95, -55));
        QTest::mouseRelease(window, Qt::LeftButton, {}, QPoint(5, 5));
        QCOMPARE(clicked.count(), 1);
        QCOMPARE(window->position(), before - QPoint(100, 60));
        QCOMPARE(store.text(QStringLiteral("stripPosition")),
                 QStringLiteral("%1,%2").arg(window->x()).arg(window->y()));
    }

    void stripKeepsItsRightEdge()
    {
        ScriptedStore store;
        FloatingStrip strip(m_painter, store);
        strip.setContent(content(QStringLiteral("42%")));
        strip.attach();
        const QRect before = strip.geometry();
        TrayContent wider = content(QStringLiteral("1850 RPM"));
        wider.title.widestText = QStringLiteral("9999 RPM");
        strip.setContent(wider);
        QVERIFY(strip.geometry().width() > before.width());
        QCOMPARE(strip.geometry().right(), before.right());
        strip.detach();
        QVERIFY(strip.geometry().isEmpty());
        QVERIFY(QGuiApplication::topLevelWindows().isEmpty());
    }

    void menuChooses_data()
    {
        QTest::addColumn<QList<int>>("keys");
        QTest::addColumn<int>("expected"); // -1: nothing
        const auto row = [](const char *name, QList<int> keys, int expected) {
            QTest::newRow(name) << keys << expected;
        };
        row("first", {Qt::Key_Down, Qt::Key_Return}, static_cast<int>(MenuAction::OpenDashboard));
        row("second", {Qt::Key_Tab, Qt::Key_Down, Qt::Key_Space},
            static_cast<int>(MenuAction::OpenSettings));
        row("last, from the end", {Qt::Key_Up, Qt::Key_Enter}, static_cast<int>(MenuAction::Quit));
        row("round", {Qt::Key_Up, Qt::Key_Down, Qt::Key_Return},
            static_cast<int>(MenuAction::OpenDashboard));
        row("nothing selected", {Qt::Key_Return, Qt::Key_Escape}, -1);
        row("given up", {Qt::Key_Down, Qt::Key_Escape}, -1);
    }
    void menuChooses()
    {
        QFETCH(QList<int>, keys);
        QFETCH(int, expected);
        auto *menu = new ItemMenu(QPoint(10, 10));
        QSignalSpy chosen(menu, &ItemMenu::chosen);
        QSignalSpy destroyed(menu, &QObject::destroyed);
        QVERIFY(QTest::qWaitForWindowExposed(menu));
        for (const int key : keys)
            QTest::keyClick(menu, static_cast<Qt::Key>(key));
        QCOMPARE(chosen.count(), expected < 0 ? 0 : 1);
        if (expected >= 0)
            QCOMPARE(static_cast<int>(chosen.first().first().value<MenuAction>()), expected);
        QTRY_COMPARE(destroyed.count(), 1);
    }

    void menuFollowsThePointer()
    {
        const QRect screen = QGuiApplication::primaryScreen()->geometry();
        auto *menu = new ItemMenu(screen.bottomRight());
        QSignalSpy chosen(menu, &ItemMenu::chosen);
        QSignalSpy destroyed(menu, &QObject::destroyed);
        QVERIFY(QTest::qWaitForWindowExposed(menu));
        QVERIFY(screen.contains(menu->geometry()));
        // The release of the click that opened it does nothing.
        QTest::mouseRelease(menu, Qt::LeftButton, {}, QPoint(20, 15));
        QCOMPARE(chosen.count(), 0);
        QTest::mouseClick(menu, Qt::LeftButton, {}, QPoint(20, menu->height() - 15));
        QCOMPARE(chosen.count(), 1);
        QCOMPARE(chosen.first().first().value<MenuAction>(), MenuAction::Quit);
        QTRY_COMPARE(destroyed.count(), 1);
    }

    void menuClosesOnAClickElsewhere()
    {
        auto *menu = new ItemMenu(QPoint(10, 10));
        QSignalSpy chosen(menu, &ItemMenu::chosen);
        QSignalSpy destroyed(menu, &QObject::destroyed);
        QVERIFY(QTest::qWaitForWindowExposed(menu));
        QTest::mouseClick(menu, Qt::LeftButton, {}, QPoint(-30, 200));
        QTRY_COMPARE(destroyed.count(), 1);
        QCOMPARE(chosen.count(), 0);
    }

private:
    static TrayContent content(const QString &text)
    {
        return {{text, QColor(0x1f, 0x99, 0x3d), QStringLiteral("100%")},
                QStringLiteral("meterkin: ") + text,
                QString()};
    }

    TitlePainter m_painter;
};

METERKIN_TEST(PanelWindowsTest);
#include "PanelWindowsTest.moc"
