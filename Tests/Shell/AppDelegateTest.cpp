#include "AppDelegate.h"
#include "InterpolateColor.h"
#include "Shell/ScriptedPlatform.h"
#include "Support/TestMain.h"

#include <QtTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const auto &[Green, Yellow, Red] = ScriptedStatusItem::colors;

/// One colour component of 8 bits may round either way.
bool isNear(const QColor &a, const QColor &b)
{
    return std::abs(a.red() - b.red()) <= 1 && std::abs(a.green() - b.green()) <= 1
        && std::abs(a.blue() - b.blue()) <= 1;
}

} // namespace

class AppDelegateTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_platform = std::make_unique<ScriptedPlatform>();
        m_platform->vitals->memory = 42.0;
        m_now = {};
    }
    void cleanup() { m_delegate.reset(); }

    void showsTheFirstReading()
    {
        launch();
        QCOMPARE(m_platform->item->titles.first(), (AttributedTitle{u"-"_s, Green, u"100%"_s}));
        moveTo(Qt::cyan);
        QCOMPARE(title(), u"-"_s);
        tick();
        QCOMPARE(title(), u"42%"_s);
        moveTo(Qt::blue);
        QCOMPARE(title(), u"42%"_s);
        QCOMPARE(m_platform->item->accessibilityLabel, u"meterkin: 42%"_s);
        QCOMPARE(m_platform->item->toolTip(), u"Fan Speed: N/A\nMemory: 42%\nCPU Usage: N/A"_s);
    }

    void blendsFromTierToTier()
    {
        launch();
        tick();
        m_platform->vitals->memory = 95.0;
        tick();
        QCOMPARE(title(), u"95%"_s); // the text changes at once, the colour does not
        QCOMPARE(shownColor().rgb(), Green.rgb());
        m_now = TimePoint(200ms);
        QVERIFY(nextStep());
        const QColor shown = shownColor();
        QVERIFY(isNear(shown, interpolateColor(Green, Red, 0.4)));

        // Another target, without a jump.
        m_platform->vitals->memory = 42.0;
        tick();
        QVERIFY(isNear(shownColor(), shown));
        m_now = TimePoint(450ms);
        QVERIFY(nextStep());
        QVERIFY(isNear(shownColor(), interpolateColor(shown, Green, 0.5)));
        m_now = TimePoint(700ms);
        QTRY_COMPARE(shownColor(), Green);
    }

    void followsTheSettings()
    {
        m_platform->vitals->fanSpeed = 4500.0;
        launch();
        tick();
        SettingsViewModel &settings = m_delegate->settings();
        settings.setMenuBarMetric(SystemMetric::FanSpeed);
        QTRY_COMPARE(title(), u"4500 RPM"_s);
        finishAnimation();
        QTRY_COMPARE(shownColor(), Red);
        settings.setFanSpeedYellow(5000.0); // the observer has armed itself again
        QVERIFY(nextStep());
        finishAnimation();
        QTRY_COMPARE(shownColor(), Yellow);
    }

    void leavesTheFanTitleOfAMachineWithoutFans()
    {
        m_platform->store.setText(u"menuBarMetric"_s, u"Fan Speed"_s);
        m_platform->vitals->fanGate->close();
        launch();
        tick();
        QCOMPARE(title(), u"N/A"_s); // there may be fans that have not answered yet
        m_platform->vitals->fanGate->open();
        QTRY_VERIFY((tick(), title() == u"42%"_s));
        QCOMPARE(m_platform->store.text(u"menuBarMetric"_s), u"Memory"_s);
        // Whoever picks it later in the same run is not overruled.
        m_delegate->settings().setMenuBarMetric(SystemMetric::FanSpeed);
        tick();
        tick();
        QCOMPARE(title(), u"N/A"_s);
    }

    void handlesReadingsTogetherWhileNobodyLooks()
    {
        launch();
        tick();
        ScriptedStatusItem &item = *m_platform->item;
        QSignalSpy ticks(m_delegate.get(), &AppDelegate::tickHandled);
        const std::pair<bool, std::function<void()>> cases[]{
            {false, [] {}},
            {true, [this] { m_delegate->showDashboard(); }},
            {true,
             [this, &item] {
                 m_delegate->closeDashboard();
                 item.isToolTipShown = true;
                 item.toolTip();
             }},
            {false, [&item] { item.isToolTipShown = false; }},
            {true, [this] { m_delegate->settings().setAlertMemory(true); }}, // unanswered
        };
        m_delegate->collector().start(0.1);
        for (const auto &[isEach, change] : cases) {
            change();
            qsizetype together = 0;
            for (int delivery = 0; delivery < 2; ++delivery) { // a change may deliver some at once
                const qsizetype before = ticks.size();
                QTRY_VERIFY(ticks.size() > before);
                together = ticks.size() - before;
            }
            QCOMPARE(together > 1, !isEach);
        }
    }

    void keepsTheLoginItemInLine()
    {
        m_platform->store.setBoolean(u"launchAtLogin"_s, false);
        m_platform->login.enabled = true;
        launch();
        QVERIFY(!m_platform->login.enabled);
    }

    void keepsTheHotkeyInLine()
    {
        launch();
        const QStringList &calls = m_platform->registrar.calls;
        SettingsViewModel &settings = m_delegate->settings();
        settings.setHotkeyKeyCode(46);
        settings.setHotkeyModifiers(0x1800);
        settings.setHotkeyEnabled(true);
        QTRY_COMPARE(calls.last(), u"bind 46+0x1800"_s);
        m_platform->registrar.press();
        QVERIFY(m_platform->shownPopover.done.isEmpty()); // from the event loop, not the handler
        QTRY_COMPARE(m_platform->shownPopover.done, QStringList(u"show at 700"_s));
        settings.setHotkeyKeyCode(0);
        QTRY_COMPARE(calls.last(), u"unbind"_s);
        m_platform->item->button = false; // no title to open from
        m_delegate->togglePopover();
        QCOMPARE(m_platform->shownPopover.done.size(), 1);
    }

private:
    using TimePoint = std::chrono::steady_clock::time_point;

    void launch()
    {
        m_delegate = std::make_unique<AppDelegate>(*m_platform, [this] { return m_now; });
        m_delegate->applicationDidFinishLaunching();
        m_isFirstTick = true;
    }
    /// Lets the collector take one sample and waits until the delegate has taken it in.
    void tick()
    {
        QSignalSpy ticks(m_delegate.get(), &AppDelegate::tickHandled);
        if (!std::exchange(m_isFirstTick, false))
            m_delegate->collector().start(86400.0);
        QVERIFY(ticks.wait());
    }
    /// To a panel where all colours are that one.
    void moveTo(const QColor &color)
    {
        m_platform->item->onlyColor = color;
        emit m_platform->item->colorsChanged();
        QCOMPARE(shownColor(), color);
    }
    /// Waits for the animation's next redraw.
    bool nextStep()
    {
        const qsizetype drawn = m_platform->item->titles.size();
        return QTest::qWaitFor([&] { return m_platform->item->titles.size() > drawn; });
    }
    /// Turns the clock past the end of an animation; its last step follows from the event loop.
    void finishAnimation()
    {
        QCoreApplication::processEvents();
        m_now += 600ms;
    }
    QString title() const { return m_platform->item->titles.last().text; }
    QColor shownColor() const { return m_platform->item->titles.last().color; }

    std::unique_ptr<ScriptedPlatform> m_platform;
    std::unique_ptr<AppDelegate> m_delegate;
    TimePoint m_now;
    bool m_isFirstTick = true;
};

METERKIN_TEST(AppDelegateTest);
#include "AppDelegateTest.moc"
