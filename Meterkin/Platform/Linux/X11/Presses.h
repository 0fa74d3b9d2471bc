#pragma once

#include "Platform/Linux/X11/Connection.h"

#include <QPoint>

/// Sees the mouse buttons wherever they are pressed, without a grab: each press reaches its target
/// as ever. Main thread only.
class X11Presses : public QObject {
    Q_OBJECT

public:
    /// The connection outlives it.
    explicit X11Presses(X11Connection &connection, QObject *parent = nullptr);

    /// False when the server cannot tell.
    bool isAvailable() const { return m_opcode != 0; }
    /// From now on until stop(); costs a wake-up for each click.
    void start();
    /// Still tells the release of a button that is down now.
    void stop();

    /// Where the pointer is in a window and on the root, device pixels.
    struct Pointer {
        QPoint inWindow;
        QPoint onRoot;
        bool buttonDown = false;
        xcb_window_t topLevel = XCB_WINDOW_NONE; ///< the root's child under the pointer
    };
    Pointer pointer(xcb_window_t window);

signals:
    void pressed();
    void released();

private:
    void handleEvent(const xcb_generic_event_t *event);
    void select(quint32 mask);

    X11Connection &m_connection;
    quint8 m_opcode = 0; ///< of the extension
    quint32 m_selected = 0;
};
