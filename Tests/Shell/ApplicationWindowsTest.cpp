#include "AppDelegate.h"
#include "Shell/ScriptedPlatform.h"
#include "Support/TestMain.h"

#include <QQmlEngine>
#include <QtTest>

/// The windows of a running program.
class ApplicationWindowsTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_platform = std::make_unique<ScriptedPlatform>();
        m_delegate = std::make_unique<AppDelegate>(*m_platform);
        m_delegate->applicationDidFinishLaunching();
    }
    void cleanup() { m_delegate.reset(); }

    void settingsWindowIsMadeOnce()
    {
        const QPointer<QQuickWindow> window = openSettings();
        QCOMPARE(window->title(), QStringLiteral("meterkin Settings"));
        QCOMPARE(window->minimumSize(), window->maximumSize());
        onlyItem(*window)->setProperty("selectedTab", 2);
        window->setPosition(40, 30);
        QCoreApplication::processEvents();
        window->close();
        QVERIFY(!window->isVisible());

        QCOMPARE(openSettings(), window.data());
        QVERIFY(window->isVisible());
        QCOMPARE(window->position(), QPoint(40, 30));
        QCOMPARE(onlyItem(*window)->property("selectedTab").toInt(), 2);
        QCOMPARE(m_platform->style.presented.size(), 2); // brought to the front
    }

    void settingsReachTheServices()
    {
        QSignalSpy ticks(m_delegate.get(), &AppDelegate::tickHandled);
        QQuickItem *view = onlyItem(*openSettings());
        QTRY_COMPARE(ticks.size(), 1);
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
        const QQuickWindow &window = *openSettings();
        const auto background = onlyItem(window)->property("color").value<QColor>();
        const int width = window.width();
        m_platform->appearance.dark = true;
        m_platform->appearance.scale = 1.5;
        emit m_platform->appearance.changed();
        QVERIFY(onlyItem(window)->property("color").value<QColor>() != background);
        QCOMPARE(window.width(), width * 3 / 2);
        m_platform->appearance.scale = 3.0;
        emit m_platform->appearance.changed();
        QVERIFY(window.screen()->availableGeometry().contains(window.frameGeometry()));
        QCOMPARE(onlyItem(window)->size(), window.size());
    }

    void givesUpTheEngineWithTheLastView()
    {
        m_delegate->showDashboard();
        std::unique_ptr<QQuickItem> dashboard = m_platform->shownPopover.make();
        m_delegate->showOnboarding();
        m_delegate->showOnboarding(); // takes the place of the first
        QVERIFY(m_platform->windows->onboardingWindow()->isVisible());
        const QPointer<QQmlEngine> engine = qmlEngine(dashboard.get());
        dashboard.reset();
        QCoreApplication::processEvents();
        QVERIFY(engine);
        m_platform->windows->closeOnboarding();
        QTRY_VERIFY(!engine);
        QVERIFY(m_platform->shownPopover.make()); // with another one
    }

private:
    QQuickWindow *openSettings()
    {
        m_delegate->openSettings();
        return m_platform->windows->settingsWindow();
    }
    static QQuickItem *onlyItem(const QQuickWindow &window)
    {
        return window.contentItem()->childItems().first();
    }

    std::unique_ptr<ScriptedPlatform> m_platform;
    std::unique_ptr<AppDelegate> m_delegate;
};

METERKIN_TEST(ApplicationWindowsTest);
#include "ApplicationWindowsTest.moc"
