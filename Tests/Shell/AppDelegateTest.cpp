#include "AppDelegate.h"
#include "InterpolateColor.h"
#include "Shell/ScriptedPlatform.h"
#include "Support/TestMain.h"

#include <QtTest>

using namespace std::chrono_literals;

namespace {

QColor green()
{
    return ScriptedStatusItem::colors[0];
}
QColor yellow()
{
    return ScriptedStatusItem::colors[1];
}
QColor red()
{
    return ScriptedStatusItem::colors[2];
}

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
        m_platform->store.setBoolean(QStringLiteral("onboardingShown"), true);
        m_platform->store.setNumber(QStringLiteral("updateInterval"), 86400.0);
        m_platform->vitals->memory = 42.0;
        m_now = {};
    }
    void cleanup() { m_delegate.reset(); }

    void launchesInOrder()
    {
        launch();
        // First what is constructed, then the launch sequence.
        QCOMPARE(m_platform->calls.join(QStringLiteral(", ")),
                 QStringLiteral("fans, pages, ticks, alerts, hot key, updates, disk images, "
                                "alerts, status item, popover, login item"));
        QCOMPARE(m_platform->item->titles.first(),
                 (AttributedTitle{QStringLiteral("-"), green(), QStringLiteral("100%")}));
        tick();
        QCOMPARE(title(), QStringLiteral("42%"));
        QCOMPARE(m_platform->item->accessibilityLabel, QStringLiteral("meterkin: 42%"));
        QCOMPARE(m_platform->item->toolTip,
                 QStringLiteral("Fan Speed: N/A\nMemory: 42%\nCPU Usage: N/A"));
    }

    void judgesTheTitle_data()
    {
        QTest::addColumn<double>("memory"); // percent, -1: cannot be read
        QTest::addColumn<double>("greenThreshold");
        QTest::addColumn<double>("yellowThreshold");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QColor>("color");
        const auto row = [](const char *name, double memory, double g, double y, const char *text,
                            const QColor &color) {
            QTest::newRow(name) << memory << g << y << QString::fromLatin1(text) << color;
        };
        row("at yellow", 80, 60, 80, "80%", red());
        row("thresholds the wrong way round", 80, 90, 70, "80%", green());
        row("absent", -1, 60, 80, "N/A", green());
        row("absent, green at zero", -1, 0, 80, "N/A", yellow());
        row("absent, both at zero", -1, 0, 0, "N/A", red());
    }
    void judgesTheTitle()
    {
        QFETCH(double, memory);
        QFETCH(double, greenThreshold);
        QFETCH(double, yellowThreshold);
        m_platform->vitals->memory = memory < 0 ? std::nullopt : std::optional(memory);
        m_platform->store.setNumber(QStringLiteral("memoryGreen"), greenThreshold);
        m_platform->store.setNumber(QStringLiteral("memoryYellow"), yellowThreshold);
        launch();
        tick();
        QTEST(title(), "text");
        finishAnimation();
        QFETCH(QColor, color);
        QTRY_COMPARE(shownColor(), color);
        QCOMPARE(m_platform->item->accessibilityLabel, QStringLiteral("meterkin: ") + title());
    }

    void blendsFromTierToTier()
    {
        m_platform->vitals->memory = 95.0;
        launch();
        tick();
        QCOMPARE(title(), QStringLiteral("95%"));
        QCOMPARE(shownColor().rgb(),
                 green().rgb()); // the text changes at once, the colour does not
        for (const auto at : {100ms, 250ms, 400ms}) {
            m_now = TimePoint(at);
            QVERIFY(nextStep());
            const QColor expected =
                interpolateColor(green(), red(), std::chrono::duration<double>(at).count() * 2);
            QVERIFY2(isNear(shownColor(), expected), qPrintable(shownColor().name()));
        }
        finishAnimation();
        QTRY_COMPARE(shownColor(), red());
    }

    void retargetsWithoutAJump()
    {
        launch();
        tick();
        m_platform->vitals->memory = 95.0;
        tick();
        m_now = TimePoint(200ms);
        QVERIFY(nextStep());
        const QColor shown = shownColor();
        QVERIFY(!isNear(shown, green()) && !isNear(shown, red()));

        m_platform->vitals->memory = 42.0;
        tick();
        QVERIFY2(isNear(shownColor(), shown), qPrintable(shownColor().name()));
        m_now = TimePoint(450ms); // half of the second animation
        QVERIFY(nextStep());
        QVERIFY(isNear(shownColor(), interpolateColor(shown, green(), 0.5)));
        m_now = TimePoint(690ms); // the first animation would be over, the second is not
        QVERIFY(nextStep());
        QVERIFY(shownColor() != green());
        m_now = TimePoint(700ms);
        QTRY_COMPARE(shownColor(), green());
    }

    void followsTheSettings()
    {
        m_platform->vitals->fanSpeed = 4500.0;
        launch();
        tick();
        QCOMPARE(title(), QStringLiteral("42%"));
        SettingsViewModel &settings = m_delegate->settings();
        settings.setMenuBarMetric(SystemMetric::fanSpeed);
        QTRY_COMPARE(title(), QStringLiteral("4500 RPM"));
        finishAnimation();
        QTRY_COMPARE(shownColor(), red());
        // The observer arms itself again, for every threshold.
        settings.setFanSpeedYellow(5000.0);
        QVERIFY(nextStep());
        finishAnimation();
        QTRY_COMPARE(shownColor(), yellow());
        settings.setFanSpeedGreen(5000.0);
        QVERIFY(nextStep());
        finishAnimation();
        QTRY_COMPARE(shownColor(), green());
    }

    void leavesTheFanTitleOfAMachineWithoutFans()
    {
        m_platform->store.setText(QStringLiteral("menuBarMetric"), QStringLiteral("Fan Speed"));
        launch();
        tick();
        QTRY_COMPARE(title(), QStringLiteral("42%"));
        QCOMPARE(m_platform->store.text(QStringLiteral("menuBarMetric")), QStringLiteral("Memory"));
        // Whoever picks it later in the same run is not overruled.
        m_delegate->settings().setMenuBarMetric(SystemMetric::fanSpeed);
        tick();
        tick();
        QCOMPARE(title(), QStringLiteral("N/A"));
    }

    void keepsTheFanTitleUntilTheFansHaveAnswered()
    {
        m_platform->store.setText(QStringLiteral("menuBarMetric"), QStringLiteral("Fan Speed"));
        m_platform->vitals->fanGate->close();
        launch();
        tick();
        const auto metric = [this] { return m_delegate->settings().menuBarMetric(); };
        QCOMPARE(metric(), SystemMetric::fanSpeed);
        m_platform->vitals->fanGate->open();
        QTRY_VERIFY((tick(), metric() == SystemMetric::memoryUsage));
    }

    void startsAtTheIntervalInEffect()
    {
        m_platform->store.setNumber(QStringLiteral("updateInterval"), -5.0);
        launch();
        QCOMPARE(m_delegate->collector().findChild<QTimer *>()->interval(), 3000);
        tick(); // the first sample does not wait for the interval
    }

    void keepsTheHotkeyInLine()
    {
        launch();
        m_platform->registrar.calls.clear();
        SettingsViewModel &settings = m_delegate->settings();
        settings.setHotkeyKeyCode(46);
        settings.setHotkeyModifiers(0x1800);
        settings.setHotkeyEnabled(true);
        const QString bound = QStringLiteral("bind 46+0x1800");
        QTRY_COMPARE(m_platform->registrar.calls.count(bound), 1);
        m_platform->registrar.press();
        QVERIFY(m_platform->shownPopover.done.isEmpty()); // from the event loop, not the handler
        QTRY_COMPARE(m_platform->shownPopover.done, QStringList{QStringLiteral("show at 700")});
        settings.setHotkeyKeyCode(0);
        QTRY_COMPARE(m_platform->registrar.calls.last(), QStringLiteral("unbind"));
    }

    void opensAndClosesTheDashboard()
    {
        launch();
        const QStringList &calls = m_platform->shownPopover.done;
        emit m_platform->item->clicked();
        emit m_platform->item->clicked();
        QCOMPARE(calls.join(u','), QStringLiteral("show at 700,close"));
        m_platform->shownPopover.swallows = true; // the press that chose has closed it
        emit m_platform->item->clicked();
        QCOMPARE(calls.size(), 2);
        emit m_platform->item->openDashboardRequested();
        m_delegate->showDashboard(); // a second start
        QCOMPARE(calls.size(), 3);
        emit m_platform->item->openSettingsRequested();
        QCOMPARE(calls.last(), QStringLiteral("close"));
        QVERIFY(m_delegate->windows().settingsWindow()->isVisible());
        m_platform->item->button = false;
        m_delegate->togglePopover();
        QCOMPARE(calls.last(), QStringLiteral("close"));
    }

    void greetsOnce()
    {
        m_platform->store.setBoolean(QStringLiteral("onboardingShown"), false);
        launch();
        const ApplicationWindows &windows = m_delegate->windows();
        QVERIFY(windows.onboardingWindow() == nullptr);
        QTRY_VERIFY(windows.onboardingWindow() != nullptr);
        windows.onboardingWindow()->close();
        QVERIFY(windows.onboardingWindow() == nullptr);
        QVERIFY(!m_platform->store.boolean(QStringLiteral("onboardingShown")));

        m_delegate->showOnboarding();
        QQuickItem *view = windows.onboardingWindow()->contentItem()->childItems().first();
        QMetaObject::invokeMethod(view, "getStarted");
        QVERIFY(m_platform->store.boolean(QStringLiteral("onboardingShown")));
        QVERIFY(windows.onboardingWindow() != nullptr);
        m_platform->store.setBoolean(QStringLiteral("onboardingShown"), false);
        QMetaObject::invokeMethod(view, "complete");
        QVERIFY(m_platform->store.boolean(QStringLiteral("onboardingShown")));
        QVERIFY(windows.onboardingWindow() == nullptr);
    }

private:
    using TimePoint = std::chrono::steady_clock::time_point;

    void launch()
    {
        m_delegate = std::make_unique<AppDelegate>(*m_platform, [this] { return m_now; });
        m_delegate->applicationDidFinishLaunching();
        m_firstTick = true;
    }

    /// Lets the collector take one sample and waits until the delegate has taken it in.
    void tick()
    {
        QSignalSpy ticks(m_delegate.get(), &AppDelegate::tickHandled);
        if (!std::exchange(m_firstTick, false))
            m_delegate->collector().start(86400.0);
        QVERIFY(ticks.wait());
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
    bool m_firstTick = true;
};

METERKIN_TEST(AppDelegateTest);
#include "AppDelegateTest.moc"
