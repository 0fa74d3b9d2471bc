#include "ApplicationWindows.h"

#include "AppDelegate.h"
#include "Shell/ScriptedPlatform.h"
#include "Support/TestMain.h"

#include <QPointer>
#include <QQmlEngine>
#include <QtTest>

/// The windows of a running program.
class ApplicationWindowsTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_platform = std::make_unique<ScriptedPlatform>();
        m_platform->store.setBoolean(QStringLiteral("onboardingShown"), true);
        m_platform->store.setNumber(QStringLiteral("updateInterval"), 86400.0);
        m_delegate = std::make_unique<AppDelegate>(*m_platform);
        m_delegate->applicationDidFinishLaunching();
    }
    void cleanup() { m_delegate.reset(); }

    void settingsWindowIsMadeOnce()
    {
        m_delegate->openSettings();
        const QPointer<QQuickWindow> window = m_delegate->windows().settingsWindow();
        QCOMPARE(window->title(), QStringLiteral("meterkin Settings"));
        QCOMPARE(window->size(), QSize(470, 520)); // the content is wider than the window asks for
        QCOMPARE(window->minimumSize(), window->maximumSize());
        QQuickItem *view = onlyItem(*window);
        view->setProperty("selectedTab", 2);
        window->setPosition(40, 30);
        QCoreApplication::processEvents();
        window->close();
        QVERIFY(!window->isVisible());

        m_delegate->openSettings();
        QCOMPARE(m_delegate->windows().settingsWindow(), window.data());
        QVERIFY(window->isVisible());
        QCOMPARE(window->position(), QPoint(40, 30));
        QCOMPARE(onlyItem(*window)->property("selectedTab").toInt(), 2);
        QCOMPARE(m_platform->style.done.count(window->title()), 2); // brought to the front
    }

    void settingsReachTheServices()
    {
        m_delegate->openSettings();
        QQuickItem *view = onlyItem(*m_delegate->windows().settingsWindow());
        QSignalSpy ticks(m_delegate.get(), &AppDelegate::tickHandled);
        QVERIFY(ticks.wait());
        m_platform->vitals->fanSpeed = 1000.0;
        QMetaObject::invokeMethod(view, "restartCollector", Q_ARG(double, 86400.0));
        QVERIFY(ticks.wait()); // a restarted collector samples at once
        QCOMPARE(view->property("fanCount").toInt(), 1); // which it had not when opened
        for (const bool wish : {false, true}) {
            QMetaObject::invokeMethod(view, "launchAtLoginChosen", Q_ARG(bool, wish));
            QCOMPARE(m_delegate->settings().launchAtLogin(), wish);
            QCOMPARE(m_platform->login.isEnabled(), wish);
        }
    }

    void followsTheDesktopsLook()
    {
        m_delegate->openSettings();
        const QQuickWindow &window = *m_delegate->windows().settingsWindow();
        m_platform->appearance.dark = true;
        m_platform->appearance.scale = 1.5;
        const auto background = onlyItem(window)->property("color").value<QColor>();
        emit m_platform->appearance.changed();
        QVERIFY(onlyItem(window)->property("color").value<QColor>() != background);
        QCOMPARE(window.width(), 705);
        m_platform->appearance.scale = 3.0;
        emit m_platform->appearance.changed();
        QVERIFY(window.screen()->availableGeometry().contains(window.frameGeometry()));
        QCOMPARE(onlyItem(window)->size(), window.size());
    }

    void givesUpTheEngineWithTheLastView()
    {
        std::unique_ptr<QQuickItem> dashboard = m_platform->shownPopover.make();
        m_delegate->showOnboarding();
        m_delegate->showOnboarding(); // takes the place of the first
        QVERIFY(m_delegate->windows().onboardingWindow()->isVisible());
        const QPointer<QQmlEngine> engine = qmlEngine(dashboard.get());
        dashboard.reset();
        QCoreApplication::processEvents();
        QVERIFY(engine);
        m_delegate->windows().closeOnboarding();
        QTRY_VERIFY(!engine);
        dashboard = m_platform->shownPopover.make(); // and makes another one
        QVERIFY(dashboard);
    }

private:
    static QQuickItem *onlyItem(const QQuickWindow &window)
    {
        return window.contentItem()->childItems().first();
    }

    std::unique_ptr<ScriptedPlatform> m_platform;
    std::unique_ptr<AppDelegate> m_delegate;
};

METERKIN_TEST(ApplicationWindowsTest);
#include "ApplicationWindowsTest.moc"
