#include "AppDelegate.h"
#include "Platform/Linux/Windows/Dialogs/InformationAlert.h"
#include "Shell/ScriptedPlatform.h"
#include "Support/TestMain.h"

#include <QtTest>

#include <algorithm>

using namespace Qt::StringLiterals;

/// The last engine takes what Qt registers of QML types with it: the next must find all again.
/// METERKIN_CYCLES says how often.
class WindowCyclesTest : public QObject {
    Q_OBJECT

private slots:
    void opensAllAgain()
    {
        const auto isRegistered = [] {
            return qmlTypeId("Meterkin.Views", 1, 0, "SystemSymbol") >= 0;
        };
        const int cycles = std::max(3, qEnvironmentVariableIntValue("METERKIN_CYCLES"));
        for (int cycle = 0; cycle < cycles; ++cycle) {
            ScriptedPlatform platform;
            AppDelegate delegate(platform);
            delegate.applicationDidFinishLaunching();
            LinuxInformationAlert alert(platform.style, platform.appearance);
            alert.run(u"Message"_s, u"Text"_s);
            delegate.openSettings();
            delegate.showOnboarding();
            delegate.showDashboard();
            QQuickWindow frame;
            std::unique_ptr<QQuickItem> dashboard = platform.shownPopover.make();
            dashboard->setParentItem(frame.contentItem());
            frame.show();
            QCOMPARE(QGuiApplication::topLevelWindows().size(), 4);
            for (QWindow *window : QGuiApplication::topLevelWindows())
                QVERIFY(!qobject_cast<QQuickWindow *>(window)->grabWindow().isNull());
            QVERIFY(isRegistered());
        }
        QVERIFY(!isRegistered());
    }
};

METERKIN_TEST(WindowCyclesTest);
#include "WindowCyclesTest.moc"
