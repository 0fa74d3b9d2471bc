#pragma once

#include "Platform/Linux/X11/Selection.h"

/// The panel window that takes tray items on this X11 screen, as panels come and go: the manager of
/// the System Tray Protocol Specification of freedesktop.org.
class XembedManager : public QObject {
    Q_OBJECT

public:
    /// The connection outlives this and may be closed.
    explicit XembedManager(X11Connection &connection, QObject *parent = nullptr);

    /// XCB_WINDOW_NONE while there is no such panel.
    xcb_window_t window() const { return m_selection.owner(); }
    /// The visual that the panel wants its items to have, and its depth in bits.
    xcb_visualid_t visual() const { return m_visual; }
    quint8 depth() const { return m_depth; }

signals:
    void windowChanged();

private:
    void readVisual();

    X11Connection &m_connection;
    X11Selection m_selection;
    xcb_visualid_t m_visual = 0;
    quint8 m_depth = 0;
};
