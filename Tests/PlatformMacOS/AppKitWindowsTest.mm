#include "Platform/macOS/AppKitWindowStyle.h"
#include "Platform/macOS/NativeView.h"

#include "Fakes/CallLog.h"
#include "Support/TestMain.h"

#include <QQuickWindow>
#include <QtTest>

namespace {

QStringList lines(const char *text)
{
    return QString::fromUtf8(text).split(u'\n');
}

} // namespace

class AppKitWindowsTest : public QObject {
    Q_OBJECT

private slots:
    void init() { CallLog::take(); }

    void stylesSettings()
    {
        QQuickWindow window;
        AppKitWindowStyle().makeTitled(window);
        QCOMPARE(CallLog::take(), lines("created with flags a001001\nwindow styleMask 3"));
        AppKitWindowStyle().present(window);
        QCOMPARE(CallLog::take(),
                 lines("unhideWithoutActivation\nwindow makeKeyAndOrderFront "
                       "0\nactivateIgnoringOtherApps 1"));
    }

    void stylesOnboarding()
    {
        QQuickWindow window;
        window.setColor(QColor(13, 17, 23));
        QCOMPARE(AppKitWindowStyle().makeOnboarding(window), WindowStyle::TitleBar::System);
        QCOMPARE(CallLog::take(),
                 lines("created with flags a001001\n"
                       "window titlebarAppearsTransparent 1\n"
                       "window titleVisibility 1\n"
                       "window styleMask 32771\n"
                       "window movableByWindowBackground 1\n"
                       "window backgroundColor\n"
                       "window level 3"));
        NSColor *color = viewOf(window).window.backgroundColor;
        // As they are: nearly the same is not the same colour.
        QVERIFY(color.redComponent == 0.050980392156862744);
        QVERIFY(color.greenComponent == 0.06666666666666667);
        QVERIFY(color.blueComponent == 0.09019607843137255);
        QVERIFY(color.alphaComponent == 1.0);
    }
};

METERKIN_TEST(AppKitWindowsTest);
#include "AppKitWindowsTest.moc"
