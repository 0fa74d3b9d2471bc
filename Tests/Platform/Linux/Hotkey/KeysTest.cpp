#include "Platform/Linux/Hotkey/CombinationText.h"
#include "Platform/Linux/Hotkey/KeyDownMonitor.h"
#include "Platform/Linux/Hotkey/KeyPositions.h"
#include "Support/TestMain.h"

#include <QWindow>
#include <QtTest>

class KeysTest : public QObject {
    Q_OBJECT

private slots:
    void namesCombinations()
    {
        QCOMPARE(combinationText({52, 0x1b00}, 0),
                 QStringLiteral("Super+Ctrl+Alt+Shift+Key(52)")); // without a symbol
        QCOMPARE(combinationText({24, 0}, 0xfe51), QStringLiteral("´")); // a dead key
        QCOMPARE(shortcutTrigger({53, 0x1b00}, ansiKeysym(53)),
                 QStringLiteral("LOGO+CTRL+ALT+SHIFT+Escape"));
    }

    void reportsEachKeyOnce()
    {
        LinuxKeyDownMonitor monitor;
        QStringList seen;
        monitor.install([&](const KeyDown &key) {
            seen += QStringLiteral("%1+%2").arg(key.keyCode).arg(key.flags, 0, 16);
            if (key.flags == EventModifier::shift)
                return false;
            monitor.remove();
            return true;
        });
        // How many of the events reach the window unanswered.
        const auto passes = [](int key, Qt::KeyboardModifiers modifiers, quint32 code,
                               const QList<QEvent::Type> &types, bool repeats = false) {
            QWindow window;
            return std::ranges::count_if(types, [&](QEvent::Type type) {
                QKeyEvent event(type, key, modifiers, code, 0, 0, {}, repeats);
                event.ignore();
                QCoreApplication::sendEvent(&window, &event);
                return !event.isAccepted();
            });
        };
        const Qt::KeyboardModifiers both = Qt::ControlModifier | Qt::MetaModifier;
        using enum QEvent::Type;
        QCOMPARE(passes(Qt::Key_Control, both, 37, {ShortcutOverride, KeyPress, KeyRelease}), 3);
        QCOMPARE(passes(Qt::Key_K, Qt::ShiftModifier, 45, {ShortcutOverride, KeyPress}), 2);
        QCOMPARE(passes(Qt::Key_Space, both, 65, {ShortcutOverride, KeyPress}), 0);
        // The handler is gone: held on, released, pressed again.
        QCOMPARE(passes(Qt::Key_Space, both, 65, {KeyRelease, ShortcutOverride, KeyPress}, true),
                 0);
        QCOMPARE(passes(Qt::Key_Space, both, 65, {KeyRelease}), 0);
        QCOMPARE(passes(Qt::Key_Space, both, 65, {ShortcutOverride, KeyPress, KeyRelease}), 3);
        QCOMPARE(seen.join(u' '), QStringLiteral("40+20000 49+140000"));
    }
};

METERKIN_TEST(KeysTest);
#include "KeysTest.moc"
