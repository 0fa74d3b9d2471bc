#include "Platform/Linux/Windows/PopoverPlacement.h"
#include "Support/TestMain.h"

#include <QtTest>

namespace {

const QRect screen(0, 0, 1280, 720);
const QRect second(1280, 100, 1000, 600); // right of it, scaled differently
constexpr QSize content(320, 300);

} // namespace

class PopoverPlacementTest : public QObject {
    Q_OBJECT

private slots:
    void standsBesideThePanel_data()
    {
        QTest::addColumn<QRect>("item");
        QTest::addColumn<QRect>("panel");
        QTest::addColumn<QRect>("screenRect");
        QTest::addColumn<QSize>("wanted");
        QTest::addColumn<PanelSide>("side");
        QTest::addColumn<QRect>("frame");
        const QRect top(0, 0, 1280, 26);
        const QRect bottom(0, 690, 1280, 30);
        const QRect left(0, 0, 40, 720);
        const QRect right(1240, 0, 40, 720);
        const QRect none;
        const auto row = [](const char *name, QRect item, QRect panel, QRect on, QSize size,
                            PanelSide side, QRect frame) {
            QTest::newRow(name) << item << panel << on << size << side << frame;
        };
        row("top", {600, 2, 60, 22}, top, screen, content, PanelSide::Top, {469, 32, 320, 300});
        row("bottom", {600, 694, 60, 22}, bottom, screen, content, PanelSide::Bottom,
            {469, 384, 320, 300});
        row("left", {2, 300, 36, 36}, left, screen, content, PanelSide::Left, {46, 167, 320, 300});
        row("right", {1242, 300, 36, 36}, right, screen, content, PanelSide::Right,
            {914, 167, 320, 300});
        row("second screen", {2200, 102, 60, 22}, {1280, 100, 1000, 26}, second, content,
            PanelSide::Top, {1952, 132, 320, 300});
        row("too high", {600, 2, 60, 22}, top, screen, {320, 3000}, PanelSide::Top,
            {469, 32, 320, 680});
        row("strip below", {900, 680, 110, 24}, none, screen, content, PanelSide::Bottom,
            {794, 374, 320, 300});
        row("square item, unseen panel", {4, 400, 30, 30}, none, screen, content, PanelSide::Left,
            {40, 264, 320, 300});
    }
    void standsBesideThePanel()
    {
        QFETCH(QRect, item);
        QFETCH(QRect, panel);
        QFETCH(QRect, screenRect);
        QFETCH(QSize, wanted);
        const PopoverPlace place = placePopover({item, panel, screenRect, screenRect}, wanted);
        QTEST(place.frame, "frame");
        QTEST(place.side, "side");
    }

    void guessesWhereTheItemIs()
    {
        const QRect panel(0, 660, 1280, 60);
        const QRect above(0, 0, 1280, 660);
        // In the panel that the cursor is in, told by the window manager or seen.
        QCOMPARE(likelyItem(screen, above, {700, 700}, {}), QRect(700, 700, 1, 1));
        QCOMPARE(likelyItem(screen, screen, {700, 700}, panel), QRect(700, 700, 1, 1));
        // Else at the tray's end of the only panel, which is thicker than it is far from the edge.
        const QRect guess = likelyItem(screen, above, {400, 300}, {});
        QCOMPARE(placePopover({guess, {}, screen, above}, content),
                 (PopoverPlace{PanelSide::Bottom, {952, 354, 320, 300}}));
        QCOMPARE(likelyItem(second, second, {1, 1}, {}), QRect(2256, 100, 1, 1));
    }
};

METERKIN_TEST(PopoverPlacementTest);
#include "PopoverPlacementTest.moc"
