#pragma once

#include "Platform/Linux/X11/Selection.h"

#include <QByteArrayView>
#include <QString>

#include <optional>

/// Those settings of an X11 desktop that the program follows.
struct XSettingsValues {
    QString themeName; ///< "Net/ThemeName"; empty when none is named
    bool isAnimated = true; ///< "Gtk/EnableAnimations"

    bool operator==(const XSettingsValues &) const = default;
};

/// The values in the block that the desktop's settings daemon publishes, as the XSETTINGS protocol
/// of freedesktop.org lays it out. Values that are missing or of another type are the default.
/// Absent when anything in the block is damaged.
std::optional<XSettingsValues> xsettingsValues(QByteArrayView block);

/// The settings that the X11 desktop's daemon publishes, as daemons come and go. Main thread only.
class XSettings : public QObject {
    Q_OBJECT

public:
    /// The connection outlives this and may be closed.
    explicit XSettings(X11Connection &connection, QObject *parent = nullptr);

    /// Without a daemon those of the last one.
    const XSettingsValues &values() const { return m_values; }

signals:
    void changed();

private:
    void handleEvent(const xcb_generic_event_t *event);
    void read();

    X11Connection &m_connection;
    X11Selection m_daemon;
    xcb_atom_t m_property = XCB_ATOM_NONE;
    XSettingsValues m_values;
};
