#pragma once

#include "Platform/Linux/X11/Connection.h"

#include <QObject>

/// The panel window that takes tray items on this X11 screen, as panels come and go.
class XembedManager : public QObject {
    Q_OBJECT

public:
    /// The connection outlives this and may be closed.
    explicit XembedManager(X11Connection &connection, QObject *parent = nullptr);

    /// XCB_WINDOW_NONE while there is no such panel.
    xcb_window_t window() const { return m_window; }
    /// What the panel wants its items to be made of.
    xcb_visualid_t visual() const { return m_visual; }
    quint8 depth() const { return m_depth; }

signals:
    void windowChanged();

private:
    void handleEvent(const xcb_generic_event_t *event);
    void find();
    void readVisual();

    X11Connection &m_connection;
    xcb_atom_t m_selection = XCB_ATOM_NONE;
    xcb_window_t m_window = XCB_WINDOW_NONE;
    xcb_visualid_t m_visual = 0;
    quint8 m_depth = 0;
};
