#include "Platform/Linux/Tray/FloatingStrip.h"
#include "Platform/Linux/Tray/ItemMenu.h"
#include "Support/ScriptedStore.h"
#include "Support/TestMain.h"

#include <QGuiApplication>
#include <QScreen>
#include <QtTest>

namespace {

TrayContent titled(const QString &text, const QString &widest = QStringLiteral("100%"))
{
    return {{text, Qt::red, widest}, QStringLiteral("meterkin: ") + text, QString()};
}

/// A strip on the screen.
struct Strip : FloatingStrip {
    Strip(TitlePainter &painter, ScriptedStore &store)
        : FloatingStrip(painter, store)
    {
        setContent(titled(QStringLiteral("42%")));
        attach();
    }
};

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
        QTest::newRow("beyond reason") << QStringLiteral("2147483647,3") << QPoint();
    }
    void stripStandsWhereItWasLeft()
    {
        QFETCH(QString, stored);
        QFETCH(QPoint, expected);
        ScriptedStore store;
        if (!stored.isEmpty())
            store.setText(QStringLiteral("stripPosition"), stored);
        Strip strip(m_painter, store);
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        QVERIFY(screen.contains(strip.geometry()));
        if (expected.isNull())
            QVERIFY(strip.geometry().left() > screen.center().x()
                    && strip.geometry().top() > screen.center().y());
        else if (screen.contains(expected))
            QCOMPARE(strip.geometry().topLeft(), expected);
    }

    void stripTellsClickFromDrag()
    {
        ScriptedStore store;
        Strip strip(m_painter, store);
        QSignalSpy clicked(&strip, &TrayHost::clicked);
        QWindow *window = QGuiApplication::topLevelWindows().value(0);
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

    void stripKeepsItsPlace_data()
    {
        QTest::addColumn<int>("offset"); // of its centre from the screen's; 0: not moved
        QTest::newRow("default corner") << 0;
        QTest::newRow("left") << -300;
        QTest::newRow("across the middle") << -4;
        QTest::newRow("right") << 300;
    }
    void stripKeepsItsPlace()
    {
        QFETCH(int, offset);
        ScriptedStore store;
        Strip strip(m_painter, store);
        const int middle = QGuiApplication::primaryScreen()->geometry().center().x();
        if (offset != 0) // by the window manager
            QGuiApplication::topLevelWindows().value(0)->setPosition(
                middle + offset - strip.geometry().width() / 2, 200);
        const QRect before = strip.geometry();
        for (int round = 0; round < 3; ++round) {
            strip.setContent(titled(QStringLiteral("1850 RPM"), QStringLiteral("9999 RPM")));
            QVERIFY(strip.geometry().width() > before.width());
            QCOMPARE(strip.geometry().left() == before.left(), offset < 0);
            QCOMPARE(strip.geometry().right() == before.right(), offset >= 0);
            strip.setContent(titled(QStringLiteral("42%")));
            QCOMPARE(strip.geometry(), before);
        }
        strip.detach();
        QVERIFY(strip.geometry().isEmpty());
    }

    void menuChooses_data()
    {
        using Chosen = QList<MenuAction>;
        QTest::addColumn<QList<Qt::Key>>("keys");
        QTest::addColumn<QPoint>("click"); // where keys are not used; from the bottom
        QTest::addColumn<Chosen>("expected");
        const auto row = [](const char *name, const QList<Qt::Key> &keys, const Chosen &expected) {
            QTest::newRow(name) << keys << QPoint() << expected;
        };
        row("second", {Qt::Key_Tab, Qt::Key_Down, Qt::Key_Space}, {MenuAction::OpenSettings});
        row("last, from the end", {Qt::Key_Up, Qt::Key_Enter}, {MenuAction::Quit});
        row("round", {Qt::Key_Up, Qt::Key_Down, Qt::Key_Return}, {MenuAction::OpenDashboard});
        row("nothing selected", {Qt::Key_Return, Qt::Key_Escape}, {});
        row("given up", {Qt::Key_Down, Qt::Key_Escape}, {});
        QTest::newRow("pointer") << QList<Qt::Key>() << QPoint(20, -15) << Chosen{MenuAction::Quit};
        QTest::newRow("elsewhere") << QList<Qt::Key>() << QPoint(-30, 200) << Chosen{};
    }
    void menuChooses()
    {
        QFETCH(QList<Qt::Key>, keys);
        QFETCH(QPoint, click);
        const QRect screen = QGuiApplication::primaryScreen()->geometry();
        auto *menu = new ItemMenu(screen.bottomRight());
        QList<MenuAction> chosen;
        connect(menu, &ItemMenu::chosen, this, [&](MenuAction action) { chosen.append(action); });
        QSignalSpy destroyed(menu, &QObject::destroyed);
        QVERIFY(QTest::qWaitForWindowExposed(menu));
        QVERIFY(screen.contains(menu->geometry()));
        for (const Qt::Key key : keys)
            QTest::keyClick(menu, key);
        if (keys.isEmpty()) {
            // The release of the click that opened it does nothing.
            QTest::mouseRelease(menu, Qt::LeftButton, {}, QPoint(20, 15));
            QVERIFY(chosen.isEmpty());
            QTest::mouseClick(menu, Qt::LeftButton, {}, click + QPoint(0, menu->height()));
        }
        QTRY_COMPARE(destroyed.count(), 1);
        QTEST(chosen, "expected");
    }

private:
    TitlePainter m_painter;
};

METERKIN_TEST(PanelWindowsTest);
#include "PanelWindowsTest.moc"
