#pragma once

#include "Platform/Linux/X11Connection.h"

#include <QByteArrayView>
#include <QObject>
#include <QString>

#include <optional>

/// The text setting `name` in what an XSETTINGS manager publishes. Absent when it is missing, is no
/// text, or when anything in the block is damaged: such a block is not to be trusted.
std::optional<QString> xsettingsText(QByteArrayView block, QByteArrayView name);

/// The theme that the X11 desktop's settings daemon names, as daemons come and go. Main thread
/// only.
class XSettings : public QObject {
    Q_OBJECT

public:
    /// The connection outlives this and may be closed.
    explicit XSettings(X11Connection &connection, QObject *parent = nullptr);

    /// Empty when no theme is named; as last told while there is no daemon.
    const QString &themeName() const { return m_themeName; }

signals:
    void themeNameChanged();

private:
    void handleEvent(const xcb_generic_event_t *event);
    void find();
    void read();

    X11Connection &m_connection;
    xcb_atom_t m_selection = XCB_ATOM_NONE;
    xcb_atom_t m_property = XCB_ATOM_NONE;
    xcb_window_t m_owner = XCB_WINDOW_NONE;
    QString m_themeName;
};
