#pragma once

#include "Platform/HotkeyRegistrar.h"
#include "Platform/Linux/Bus/RetryTimer.h"
#include "Platform/Linux/X11/KeyboardLayout.h"

#include <QDeadlineTimer>

#include <optional>

/// The global hot key of an X session: a grab of the key at the stored position, on the root
/// window, that follows changes of the keyboard. The server tells nobody that another program has
/// given its grab up, so one that is refused is tried again from time to time.
class X11Registrar : public QObject, public HotkeyRegistrar {
    Q_OBJECT

public:
    /// Both outlive it.
    X11Registrar(X11Connection &connection, X11KeyboardLayout &keyboard, QObject *parent = nullptr);

    void bind(const HotkeyCombination &combination, const HotkeyIdentifier &identifier,
              std::function<void()> pressed) override;
    void unbind() override;

private:
    /// What the server is asked for.
    struct Grab {
        xcb_keycode_t key;
        quint16 modifiers;
        quint16 locks; ///< whose state does not matter; none of the modifiers

        bool operator==(const Grab &) const = default;
    };

    std::optional<Grab> findGrab(const HotkeyCombination &combination);
    bool take(const Grab &grab);
    void release();
    void follow();
    void tryNow();
    void forget();
    void handleEvent(const xcb_generic_event_t *event);
    void handlePress(const xcb_key_press_event_t &press);

    X11Connection &m_connection;
    X11KeyboardLayout &m_keyboard;
    std::function<void()> m_pressed;
    std::optional<HotkeyCombination> m_combination; ///< absent while none is wanted
    RetryTimer m_retry;
    std::optional<Grab> m_grab; ///< absent also while the server refuses
    xcb_keycode_t m_heldKey = 0; ///< 0 for none
    QDeadlineTimer m_mayRepeat{0}; ///< until then the key may be down from before the grab
    xcb_timestamp_t m_releasedAt = XCB_CURRENT_TIME;
};
