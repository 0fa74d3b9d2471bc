#pragma once

#include "Platform/KeyboardLayout.h"
#include "Platform/Linux/Hotkey/KeyNames.h"
#include "Platform/Linux/Hotkey/ModifierBits.h"
#include "Platform/Linux/X11/Connection.h"

#include <QTimer>

/// The keyboard of the X server as it is mapped now, read from the server at each call. Without a
/// server, key codes are taken for those of evdev and the layout for the American one. Main thread
/// only.
class LinuxKeyboardLayout : public QObject, public KeyboardLayout {
    Q_OBJECT

public:
    /// The connection outlives it.
    explicit LinuxKeyboardLayout(X11Connection &connection, QObject *parent = nullptr);

    X11KeyNames keyNames();
    X11ModifierBits modifierBits();
    bool isDown(xcb_keycode_t keyCode);
    /// Whether a held key sends presses alone. Otherwise each follows a release of the same time.
    bool hasDetectableRepeat() const { return m_hasDetectableRepeat; }

    /// The symbol that the key with that virtual key code has without modifiers; 0 for none.
    std::uint32_t keysym(std::uint32_t virtualKeyCode);

signals:
    /// Key codes, modifiers, symbols or the layout are others now. Once for a burst of changes,
    /// from the first call on that reads them.
    void changed();

private:
    bool useXkb();
    QString write(const HotkeyCombination &combination) override;
    void watch();
    std::uint32_t presentKeysym(std::uint32_t keyCode);
    void handleEvent(const xcb_generic_event_t *event);

    X11Connection &m_connection;
    std::optional<quint8> m_firstEvent; ///< of the XKB extension; absent until it is in use
    bool m_hasDetectableRepeat = false;
    QTimer m_changedSoon;
};
