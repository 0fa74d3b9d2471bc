#include "Platform/Linux/Hotkey/KeyDownMonitor.h"

#include "Support/TestMain.h"

#include <QWindow>
#include <QtTest>

class LinuxKeyDownMonitorTest : public QObject {
    Q_OBJECT

private slots:
    void reportsEachKeyOnce()
    {
        LinuxKeyDownMonitor filter;
        QStringList seen;
        filter.install([&](const KeyDown &key) {
            seen += QStringLiteral("%1+%2").arg(key.keyCode).arg(key.flags, 0, 16);
            if (key.flags == 0x20000)
                return false;
            filter.remove();
            return true;
        });
        const Qt::KeyboardModifiers both = Qt::ControlModifier | Qt::MetaModifier;
        using enum QEvent::Type;
        QCOMPARE(passes(Qt::Key_Control, both, 37, {ShortcutOverride, KeyPress, KeyRelease}), 3);
        QCOMPARE(passes(Qt::Key_K, Qt::ShiftModifier, 45, {ShortcutOverride, KeyPress}), 2);
        // Held on, and released, when the handler is gone.
        QCOMPARE(passes(Qt::Key_Space, both, 65, {ShortcutOverride, KeyPress}), 0);
        QCOMPARE(passes(Qt::Key_Space, both, 65, {KeyRelease, ShortcutOverride, KeyPress}, true),
                 0);
        QCOMPARE(passes(Qt::Key_Space, both, 65, {KeyRelease}), 0);
        QCOMPARE(passes(Qt::Key_Space, both, 65, {ShortcutOverride, KeyPress, KeyRelease}), 3);
        QCOMPARE(seen.join(u' '), QStringLiteral("40+20000 49+140000"));
    }

private:
    /// How many of the events reach the window unanswered.
    static int passes(int key, Qt::KeyboardModifiers modifiers, quint32 code,
                      const QList<QEvent::Type> &types, bool repeats = false)
    {
        QWindow window;
        return static_cast<int>(std::ranges::count_if(types, [&](QEvent::Type type) {
            QKeyEvent event(type, key, modifiers, code, 0, 0, {}, repeats);
            event.ignore();
            QCoreApplication::sendEvent(&window, &event);
            return !event.isAccepted();
        }));
    }
};

METERKIN_TEST(LinuxKeyDownMonitorTest);
#include "KeyDownMonitorTest.moc"
