#pragma once

#include "Platform/Linux/X11/Connection.h"

// Programs with a role on a screen own a selection named after the role and the screen's number,
// such as "_NET_WM_CM_S0": "Manager Selections" in the Inter-Client Communication Conventions
// Manual. Names are given here without the number.

/// The window of the selection's owner; XCB_WINDOW_NONE while nobody owns it. The connection is
/// open.
xcb_window_t x11SelectionOwner(X11Connection &connection, const QByteArray &name);

/// Follows the owner of a selection. Only for roles whose programs announce themselves. Main thread
/// only.
class X11Selection : public QObject {
    Q_OBJECT

public:
    /// The connection outlives this and may be closed. It also reports `ownerEvents`, a mask of
    /// xcb_event_mask_t, of the owner's window.
    X11Selection(X11Connection &connection, const QByteArray &name, quint32 ownerEvents,
                 QObject *parent = nullptr);

    /// XCB_WINDOW_NONE while there is none.
    xcb_window_t owner() const { return m_owner; }

signals:
    void ownerChanged();

private:
    void handleEvent(const xcb_generic_event_t *event);
    void find();
    bool watch(xcb_window_t window, quint32 events);
    void setOwner(xcb_window_t owner);

    X11Connection &m_connection;
    const QByteArray m_name;
    const quint32 m_ownerEvents;
    xcb_window_t m_owner = XCB_WINDOW_NONE;
};
