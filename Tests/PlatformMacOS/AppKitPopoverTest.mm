#include "Platform/macOS/AppKitPopover.h"
#include "Platform/macOS/NativeView.h"

#include "Fakes/CallLog.h"
#import "Fakes/FakeEvents.h"
#import "Fakes/FakePopover.h"
#import "Fakes/FakeViews.h"
#include "Support/TestMain.h"

#include <QQuickItem>
#include <QtTest>

#include <algorithm>

class AppKitPopoverTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        CallLog::take();
        FakeEvents::pressedButtons = 0;
        FakeEvents::mouseLocation = {600, 300};
        m_button = [[NSView alloc] initWithFrame:NSMakeRect(40, 2, 60, 20)];
        placeInWindow(m_button, QStringLiteral("menu bar"), {1000, 776});
        m_popover = std::make_unique<AppKitPopover>([this] { return WId(m_button); });
        m_popover->setContent([this] {
            auto item = std::make_unique<QQuickItem>();
            item->setImplicitWidth(320);
            item->setImplicitHeight(479.5);
            m_item = item.get();
            return item;
        });
    }
    void cleanup()
    {
        m_popover.reset();
        QVERIFY(!m_item);
        FakePopover::finishClosing(); // nobody listens any more
    }

    void showsAtButton()
    {
        QVERIFY(!m_item); // made when it is needed
        show();
        QCOMPARE(CallLog::take(),
                 QStringList({QStringLiteral("behavior 1"), QStringLiteral("animates 1"),
                              QStringLiteral("created with flags 812"),
                              QStringLiteral("contentSize 320x480"),
                              QStringLiteral("unhideWithoutActivation"),
                              QStringLiteral("activateIgnoringOtherApps 1"),
                              QStringLiteral("show 0 0 60 20 edge 1"),
                              QStringLiteral("popover makeKeyWindow"),
                              QStringLiteral("popover makeFirstResponder 1")}));
        QVERIFY(m_popover->isShown() && quick().isVisible());
        QCOMPARE(quick().color(), QColor(Qt::transparent));
        QVERIFY(m_item->hasActiveFocus());
        compareSizes(QSize(320, 480));
        QVERIFY(!m_item->clip());
    }

    void followsContent()
    {
        show();
        m_item->setImplicitHeight(500);
        QTRY_COMPARE(quick().height(), 500);
        compareSizes(QSize(320, 500));
        m_item->setImplicitHeight(4000); // the screen has 800
        QTRY_COMPARE(quick().height(), 776);
        compareSizes(QSize(320, 776));
        QVERIFY(m_item->clip());
    }

    void closes()
    {
        show();
        CallLog::take();
        quick().contentItem()->setFocus(false); // as long as the program is not active
        QTest::keyClick(&quick(), Qt::Key_Escape);
        QCOMPARE(CallLog::take(), {QStringLiteral("performClose 0")});
        QVERIFY(quick().isVisible()); // it fades out
        FakePopover::finishClosing();
        QVERIFY(!quick().isVisible());
        QCOMPARE(CallLog::take(), {QStringLiteral("hide 0")}); // others get the keyboard back
        m_popover->close();
        QVERIFY(CallLog::take().isEmpty());
    }

    void hidesNoWindow_data()
    {
        QTest::addColumn<int>("styleMask");
        QTest::addColumn<bool>("visible");
        QTest::addColumn<bool>("hides");
        QTest::newRow("with a title") << 3 << true << false;
        QTest::newRow("with a title, closed") << 3 << false << true;
        QTest::newRow("of the menu bar") << 0 << true << true;
    }
    void hidesNoWindow()
    {
        QFETCH(const int, styleMask);
        QFETCH(const bool, visible);
        NSWindow *window = [[NSWindow alloc] init];
        window.styleMask = static_cast<NSWindowStyleMask>(styleMask);
        if (visible)
            [window makeKeyAndOrderFront:nil];
        FakeApplication::windows = [NSArray arrayWithObject:window];
        show();
        m_popover->close();
        FakePopover::finishClosing();
        QTEST(CallLog::take().contains(QStringLiteral("hide 0")), "hides");
        FakeApplication::windows = nil;
    }

    void reportOfAnEarlierCloseIsIgnored()
    {
        show();
        m_popover->close();
        show();
        FakePopover::finishClosing();
        QVERIFY(m_popover->isShown() && quick().isVisible());
    }

    void forgetsWhatIsHidden()
    {
        show();
        m_popover->close();
        FakePopover::finishClosing();
        QTimer &forgetLater = timer(30000);
        QVERIFY(forgetLater.isActive());
        const QQuickItem *first = m_item;
        show();
        QVERIFY(m_item == first && !forgetLater.isActive());
        m_popover->close();
        FakePopover::finishClosing();
        NSView *view = viewOf(quick());
        forgetLater.setInterval(0);
        QTRY_VERIFY(!m_item);
        QVERIFY(view.superview == nil);
        show();
        QVERIFY(m_item);
        m_popover->setContent({});
        QVERIFY(!m_item && !m_popover->isShown());
        FakePopover::finishClosing();
        m_popover->show({});
        QVERIFY(!m_popover->isShown());
    }

    void needsButton_data()
    {
        QTest::addColumn<bool>("hasButton");
        QTest::newRow("no button") << false;
        QTest::newRow("button without a window") << true;
    }
    void needsButton()
    {
        QFETCH(const bool, hasButton);
        placeInWindow(m_button, QString());
        m_button = hasButton ? m_button : nil;
        show();
        QVERIFY(!m_popover->isShown() && !m_item);
    }

    void clickThatClosesDoesNotReopen_data()
    {
        QTest::addColumn<QPoint>("press"); // from the screen's lower left corner
        QTest::addColumn<bool>("isOver"); // for longer than a report of it may take
        QTest::addColumn<bool>("opens");
        QTest::newRow("at the item's upper edge") << QPoint(1050, 800) << false << false;
        QTest::newRow("another click") << QPoint(1050, 790) << true << true;
        QTest::newRow("hot key after a press elsewhere") << QPoint(500, 400) << false << true;
    }
    void clickThatClosesDoesNotReopen()
    {
        QFETCH(const QPoint, press);
        QFETCH(const bool, isOver);
        show();
        FakeEvents::mouseLocation = NSMakePoint(press.x(), press.y());
        FakeEvents::pressedButtons = 1;
        FakePopover::startClosing();
        FakePopover::finishClosing();
        if (isOver) {
            FakeEvents::pressedButtons = 0;
            QTRY_VERIFY(!timer(20).isActive());
            QTest::qWait(250);
        }
        QTEST(!m_popover->swallowsClick({}), "opens");
        QVERIFY(!m_popover->swallowsClick({})); // once for each press
    }

private:
    void show() { m_popover->show({}); }
    QTimer &timer(int interval) const
    {
        const auto timers = m_popover->findChildren<QTimer *>();
        return **std::ranges::find(timers, interval, &QTimer::interval);
    }
    QQuickWindow &quick() const { return *m_item->window(); }
    void compareSizes(QSize size) const
    {
        const NSSize content = FakePopover::last.contentSize;
        QCOMPARE(QSizeF(content.width, content.height), QSizeF(size));
        QCOMPARE(quick().size(), size);
        QCOMPARE(m_item->size(), QSizeF(size));
        NSView *view = viewOf(quick());
        QVERIFY(NSEqualRects(view.frame, NSMakeRect(0, 0, size.width(), size.height())));
        // Where the popover has put it.
        QVERIFY(
            NSEqualRects(view.superview.frame, NSMakeRect(13, 13, size.width(), size.height())));
    }

    NSView *m_button = nil;
    std::unique_ptr<AppKitPopover> m_popover;
    QPointer<QQuickItem> m_item;
};

METERKIN_TEST(AppKitPopoverTest);
#include "AppKitPopoverTest.moc"
