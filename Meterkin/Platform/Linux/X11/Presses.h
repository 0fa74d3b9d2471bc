#pragma once

#include "Platform/Linux/X11/PressCatcher.h"

#include <QPoint>

/// Reports mouse buttons that are pressed outside of a popup. On X11 through the X Input Extension
/// 2, without a grab: each press still reaches its window. Under Xwayland a transparent window
/// takes them. Main thread only.
class X11Presses : public QObject {
    Q_OBJECT

public:
    /// The connection outlives it.
    explicit X11Presses(X11Connection &connection, QObject *parent = nullptr);

    /// False when the server lacks the extension.
    bool isAvailable() const { return m_opcode != 0; }
    /// Reports until stop(); costs a wake-up for each click. `popup` is on the screen: device
    /// pixels on the root. To be called again when it moves. On X11 presses in it are reported,
    /// too.
    void start(const QRect &popup);
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
    void report(quint32 button, bool isPress);
    void end();
    void select(quint32 mask);

    X11Connection &m_connection;
    X11PressCatcher m_catcher; ///< under Xwayland
    quint8 m_opcode = 0; ///< of the extension
    quint32 m_selected = 0;
    bool m_isStopping = false; ///< at the release of a button
    bool m_isLackReported = false;
};
