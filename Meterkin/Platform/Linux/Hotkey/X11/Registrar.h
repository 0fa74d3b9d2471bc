#pragma once

#include "Platform/HotkeyRegistrar.h"
#include "Platform/Linux/Bus/RetryTimer.h"
#include "Platform/Linux/Hotkey/X11/KeyboardLayout.h"

#include <QDeadlineTimer>

#include <optional>

/// The global hot key of an X session: a grab on the root window, of the key at the stored
/// position. It follows changes of the keyboard. The server does not report that another program
/// gives up its grab, so a refused one is retried.
class X11Registrar : public QObject, public HotkeyRegistrar {
    Q_OBJECT

public:
    /// Both outlive it.
    X11Registrar(X11Connection &connection, X11KeyboardLayout &keyboard, QObject *parent = nullptr);

    void bind(const HotkeyCombination &combination, std::function<void()> pressed) override;
    void unbind() override;

private:
    struct Grab {
        xcb_keycode_t key;
        quint16 modifiers;
        quint16 locks; ///< modifiers whose state does not matter

        bool operator==(const Grab &) const = default;
    };

    std::optional<Grab> findGrab(const HotkeyCombination &combination);
    bool take(const Grab &grab);
    void release();
    void follow();
    void tryNow();
    void report(HotkeyObstacle obstacle, const char *reason);
    void forget();
    void handleEvent(const xcb_generic_event_t *event);
    void handlePress(const xcb_key_press_event_t &press);

    X11Connection &m_connection;
    X11KeyboardLayout &m_keyboard;
    std::function<void()> m_pressed;
    std::optional<HotkeyCombination> m_combination; ///< absent while none is wanted
    RetryTimer m_retry;
    std::optional<Grab> m_grab; ///< absent while the server refuses
    xcb_keycode_t m_heldKey = 0; ///< 0 for none
    QDeadlineTimer m_mayRepeat{0}; ///< until then a press may be a repeat of one before the grab
    xcb_timestamp_t m_releasedAt = XCB_CURRENT_TIME;
};
