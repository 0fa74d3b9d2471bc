#pragma once

#include "Platform/Linux/X11Connection.h"
#include "Platform/Linux/X11KeyNames.h"
#include "Platform/Linux/X11ModifierBits.h"

#include <QTimer>

/// The keyboard of the X server as it is mapped now. Each question asks the server again; without
/// one, key codes are taken for those of evdev. Main thread only.
class X11Keyboard : public QObject {
    Q_OBJECT

public:
    /// The connection outlives it.
    explicit X11Keyboard(X11Connection &connection, QObject *parent = nullptr);

    X11KeyNames keyNames();
    X11ModifierBits modifierBits();
    bool isDown(xcb_keycode_t keyCode);
    /// Whether a key that is held on sends presses alone; else each comes after a release of the
    /// same time.
    bool hasDetectableRepeat() const { return m_hasDetectableRepeat; }

    /// From now on changed() tells of changes, until stopWatching().
    void startWatching();
    void stopWatching();

signals:
    /// Codes or modifiers may be others now; once for a burst.
    void changed();

private:
    bool useXkb();
    void select(quint16 events);
    void handleEvent(const xcb_generic_event_t *event);

    X11Connection &m_connection;
    std::optional<quint8> m_firstEvent; ///< of XKB; absent until it is in use
    bool m_hasDetectableRepeat = false;
    bool m_isWatching = false;
    QTimer m_changedSoon;
};
