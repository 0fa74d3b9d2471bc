#pragma once

#include "Platform/Linux/X11/Connection.h"

#include <QPoint>

/// Reports mouse buttons wherever they are pressed, through the X Input Extension 2. Without a
/// grab: each press still reaches its window. Main thread only.
class X11Presses : public QObject {
    Q_OBJECT

public:
    /// The connection outlives it.
    explicit X11Presses(X11Connection &connection, QObject *parent = nullptr);

    /// False when the server lacks the extension.
    bool isAvailable() const { return m_opcode != 0; }
    /// Reports until stop(); costs a wake-up for each click.
    void start();
    /// A release of a button that is down now is still reported.
    void stop();

    struct Pointer {
        QPoint inWindow; ///< device pixels
        QPoint onRoot; ///< device pixels
        bool isButtonDown = false;
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
    bool m_isLackReported = false;
};
