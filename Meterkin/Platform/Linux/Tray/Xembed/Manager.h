#pragma once

#include "Platform/Linux/X11/Selection.h"

#include <QColor>

#include <optional>

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
    /// Whether the panel is upright, so that its items stand one above the other.
    bool isVertical() const { return m_isVertical; }
    /// Whether the panel is the window manager, too, as that of GNOME. It draws its items by itself
    /// then, so that its windows do not tell what these stand on.
    bool isWindowManager() const { return m_isWindowManager; }
    /// What the panel draws texts in, as it tells just now; absent when it does not.
    std::optional<QColor> textColor() const;

signals:
    /// Another panel is there, or none, or the panel has turned.
    void windowChanged();
    void colorsChanged();

private:
    void handleEvent(const xcb_generic_event_t *event);
    void readAll();
    /// The panel's property.
    QList<quint32> words(const char *property, xcb_atom_t type) const;
    void readVisual();
    /// Whether it is another one than before.
    bool readOrientation();
    void readWindowManager();

    X11Connection &m_connection;
    X11Selection m_selection;
    xcb_visualid_t m_visual = 0;
    quint8 m_depth = 0;
    bool m_isVertical = false;
    bool m_isWindowManager = false;
};
