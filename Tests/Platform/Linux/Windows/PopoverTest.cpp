#include "Platform/Linux/Windows/PopoverPlacement.h"
#include "Platform/Linux/Windows/PopoverWindow.h"
#include "Platform/ReopenGuard.h"
#include "Support/TestMain.h"

#include <QtTest>

#include <tuple>

class PopoverTest : public QObject {
    Q_OBJECT

private slots:
    void standsBesideThePanel()
    {
        const QRect screen(0, 0, 1280, 720);
        const QRect second(1280, 100, 1000, 600); // right of it, scaled differently
        const QRect top(0, 0, 1280, 26);
        // The item, its panel where that is known, the screen, the content's height, the frame.
        for (const auto &[item, panel, on, height, frame] :
             {std::tuple(QRect(600, 2, 60, 22), top, screen, 300, QRect(469, 32, 320, 300)),
              {{600, 694, 60, 22}, {0, 690, 1280, 30}, screen, 300, {469, 384, 320, 300}},
              {{1242, 300, 36, 36}, {1240, 0, 40, 720}, screen, 300, {914, 167, 320, 300}},
              {{2200, 102, 60, 22}, {1280, 100, 1000, 26}, second, 300, {1952, 132, 320, 300}},
              {{600, 2, 60, 22}, top, screen, 3000, {469, 32, 320, 680}}, // too high
              {{900, 680, 110, 24}, {}, screen, 300, {794, 374, 320, 300}}, // a strip below
              {{4, 400, 30, 30}, {}, screen, 300, {40, 264, 320, 300}}}) // a vertical panel's item
            QCOMPARE(placePopover({item, panel, on, on}, {320, height}).frame, frame);

        const QRect above(0, 0, 1280, 660);
        // An item that is not known: in the panel with the cursor, reported or found ...
        QCOMPARE(likelyItem(screen, above, {700, 700}, {}), QRect(700, 700, 1, 1));
        QCOMPARE(likelyItem(screen, screen, {700, 700}, {0, 660, 1280, 60}), QRect(700, 700, 1, 1));
        // ... else at the tray's end of the only panel, or of the top edge.
        const QRect guess = likelyItem(screen, above, {400, 300}, {});
        QCOMPARE(placePopover({guess, {}, screen, above}, {320, 300}).frame,
                 QRect(952, 354, 320, 300));
        QCOMPARE(likelyItem(second, second, {1, 1}, {}), QRect(2256, 100, 1, 1));
    }

    void animatesEachTime()
    {
        auto item = std::make_unique<QQuickItem>();
        const QQuickItem &content = *item;
        PopoverWindow window(std::move(item), FrameStyle::Square, Qt::Window);
        QSignalSpy hidden(&window, &PopoverWindow::hidden);
        for (int time = 1; time <= 2; ++time) {
            window.animateIn();
            QVERIFY(content.opacity() < 1);
            QTRY_COMPARE(content.opacity(), 1.0);
            window.animateOut();
            QCOMPARE(hidden.size(), time - 1);
            QTRY_COMPARE(hidden.size(), time);
        }
    }

    void closingClickDoesNotReopen()
    {
        using Place = std::optional<QPoint>;
        const QRect item(100, 0, 60, 24);
        const QRect reported(118, 9, 2, 2); // a point beside the press, as some panels send
        // Press, release (-1: not reported) and click on an item; whether that is swallowed.
        for (const auto &[press, release, click, clicked, isSwallowed] :
             {std::tuple(Place({120, 10}), 90, 100, item, true),
              {Place({120, 10}), 90, 480, reported, true},
              {Place({120, 10}), -1, 9000, item, false},
              {Place({120, 10}), 90, 500, item, false},
              {Place({9, 300}), 90, 99, item, false},
              {Place(), -1, 390, item, true},
              {Place(), -1, 410, item, false}}) {
            ReopenGuard guard;
            guard.closedByPress(press, 0);
            if (release >= 0)
                guard.released(release);
            QCOMPARE(guard.swallows(clicked, click), isSwallowed);
            QVERIFY(!guard.swallows(clicked, click)); // once for each press
        }
    }
};

METERKIN_TEST(PopoverTest);
#include "PopoverTest.moc"
