#pragma once

#include "Platform/Linux/Hotkey/KeyboardLayout.h"
#include "Platform/Linux/Hotkey/X11/KeyNames.h"
#include "Platform/Linux/Hotkey/X11/ModifierBits.h"
#include "Platform/Linux/X11/Connection.h"

#include <QTimer>

#include <optional>

/// The keyboard of the X server as it is mapped now, read from the server at each call. Main thread
/// only.
class X11KeyboardLayout : public LinuxKeyboardLayout {
    Q_OBJECT

public:
    /// The connection outlives it.
    explicit X11KeyboardLayout(X11Connection &connection, QObject *parent = nullptr);

    X11KeyNames keyNames();
    X11ModifierBits modifierBits();
    bool isDown(xcb_keycode_t keyCode);
    /// Whether a held key sends presses alone. Otherwise each follows a release of the same time.
    bool hasDetectableRepeat() const { return m_hasDetectableRepeat; }

    std::uint32_t virtualKeyCode(std::uint32_t hardwareCode) override;
    std::uint32_t keysym(std::uint32_t virtualKeyCode) override;

signals:
    /// Key codes, modifiers, symbols or the layout are others now. Once for a burst of changes,
    /// from the first call on that reads them.
    void changed();

private:
    bool useXkb();
    void watch();
    std::uint32_t presentKeysym(std::uint32_t keyCode);
    void handleEvent(const xcb_generic_event_t *event);

    X11Connection &m_connection;
    std::optional<quint8> m_firstEvent; ///< of the XKB extension; absent until it is in use
    bool m_hasDetectableRepeat = false;
    QTimer m_changedSoon;
};
