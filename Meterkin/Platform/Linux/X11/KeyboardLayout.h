#pragma once

#include "Platform/KeyboardLayout.h"
#include "Platform/Linux/X11/Connection.h"
#include "Platform/Linux/X11/KeyNames.h"
#include "Platform/Linux/X11/ModifierBits.h"

#include <QTimer>

/// The keyboard of the X server as it is mapped now. Each question asks the server again; without
/// one, key codes are taken for those of evdev and the layout for the American one. From the first
/// question on changed() tells of other codes, modifiers, symbols and layouts, once for a burst.
/// Main thread only.
class X11KeyboardLayout : public QObject, public KeyboardLayout {
    Q_OBJECT

public:
    /// The connection outlives it.
    explicit X11KeyboardLayout(X11Connection &connection, QObject *parent = nullptr);

    X11KeyNames keyNames();
    X11ModifierBits modifierBits();
    bool isDown(xcb_keycode_t keyCode);
    /// Whether a key that is held on sends presses alone; else each comes after a release of the
    /// same time.
    bool hasDetectableRepeat() const { return m_hasDetectableRepeat; }

    /// What the key with that virtual key code gives without modifiers; 0 when there is none.
    std::uint32_t keysym(std::uint32_t virtualKeyCode);

signals:
    /// Once for a burst.
    void changed();

private:
    bool useXkb();
    QString write(const HotkeyCombination &combination) override;
    void watch();
    std::uint32_t presentKeysym(std::uint32_t keyCode);
    void handleEvent(const xcb_generic_event_t *event);

    X11Connection &m_connection;
    std::optional<quint8> m_firstEvent; ///< of XKB; absent until it is in use
    bool m_hasDetectableRepeat = false;
    QTimer m_changedSoon;
};
