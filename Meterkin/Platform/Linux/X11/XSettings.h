#pragma once

#include "Platform/Linux/X11/Connection.h"

#include <QByteArrayView>
#include <QObject>
#include <QString>

#include <optional>

/// What is of use to us of the settings that an X11 desktop shares with its programs.
struct XSettingsValues {
    QString themeName; ///< "Net/ThemeName"; empty when none is named
    bool isAnimated = true; ///< "Gtk/EnableAnimations"

    bool operator==(const XSettingsValues &) const = default;
};

/// The values in what an XSETTINGS manager publishes; those that are missing or of another type are
/// the default. Absent when anything in the block is damaged: such a block is not to be trusted.
std::optional<XSettingsValues> xsettingsValues(QByteArrayView block);

/// What the X11 desktop's settings daemon says, as daemons come and go. Main thread only.
class XSettings : public QObject {
    Q_OBJECT

public:
    /// The connection outlives this and may be closed.
    explicit XSettings(X11Connection &connection, QObject *parent = nullptr);

    /// As last told while there is no daemon.
    const XSettingsValues &values() const { return m_values; }

signals:
    void changed();

private:
    void handleEvent(const xcb_generic_event_t *event);
    void find();
    void read();

    X11Connection &m_connection;
    xcb_atom_t m_selection = XCB_ATOM_NONE;
    xcb_atom_t m_property = XCB_ATOM_NONE;
    xcb_window_t m_owner = XCB_WINDOW_NONE;
    XSettingsValues m_values;
};
