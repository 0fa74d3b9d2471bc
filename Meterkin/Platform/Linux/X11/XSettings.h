#pragma once

#include "Platform/Linux/Display/Server.h"
#include "Platform/Linux/X11/Selection.h"

#include <QByteArrayView>

#include <optional>

/// The values in the block that the desktop's settings daemon publishes, as the XSETTINGS protocol
/// of freedesktop.org lays it out: "Net/ThemeName" and "Gtk/EnableAnimations". Values that are
/// missing or of another type are the default. Absent when anything in the block is damaged.
std::optional<ThemeSettings> xsettingsValues(QByteArrayView block);

/// The settings that the X11 desktop's daemon publishes, as daemons come and go. Main thread only.
class XSettings : public QObject {
    Q_OBJECT

public:
    /// The connection outlives this and may be closed.
    explicit XSettings(X11Connection &connection, QObject *parent = nullptr);

    /// Without a daemon those of the last one.
    const ThemeSettings &values() const { return m_values; }

signals:
    void changed();

private:
    void handleEvent(const xcb_generic_event_t *event);
    void read();

    X11Connection &m_connection;
    X11Selection m_daemon;
    xcb_atom_t m_property = XCB_ATOM_NONE;
    ThemeSettings m_values;
};
