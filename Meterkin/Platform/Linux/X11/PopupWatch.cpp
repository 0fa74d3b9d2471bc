#include "Platform/Linux/X11/PopupWatch.h"

#include "Platform/Linux/Display/ScreenCoordinates.h"
#include "Platform/Linux/Display/Server.h"

X11PopupWatch::X11PopupWatch(X11Connection &connection, QObject *parent)
    : PopupWatch(parent)
    , m_connection(connection)
    , m_presses(connection)
    , m_focus(connection, m_presses)
{
    connect(&m_presses, &X11Presses::pressed, this, &X11PopupWatch::handlePress);
    connect(&m_presses, &X11Presses::released, this, &PopupWatch::released);
    connect(&m_focus, &X11Focus::lost, this, &X11PopupWatch::handleFocusLoss);
}

void X11PopupWatch::start(const QWindow &popup, const QRect &frame)
{
    if (!isOnX11() || !m_connection.isOpen())
        return;
    m_popup = &popup;
    m_frame = frame;
    m_presses.start(frameOnRoot());
}

void X11PopupWatch::stop()
{
    if (m_grabber != nullptr)
        m_grabber->setKeyboardGrabEnabled(false);
    m_grabber = nullptr;
    // The pressed window may take the focus. If it does not, the focus is given back at the end.
    m_focus.stopWatching();
    m_presses.stop();
}

void X11PopupWatch::takeKeyboard(QWindow &popup)
{
    if (!m_connection.isXwayland()) {
        m_focus.take(static_cast<xcb_window_t>(popup.winId()));
        return;
    }
    // The focus is the compositor's there.
    popup.setKeyboardGrabEnabled(true);
    m_grabber = &popup;
}

/// Device pixels.
QRect X11PopupWatch::frameOnRoot() const
{
    return QRect(nativePosition(m_popup->position() + m_frame.topLeft(), *m_popup->screen()),
                 (QSizeF(m_frame.size()) * m_popup->devicePixelRatio()).toSize());
}

void X11PopupWatch::handlePress()
{
    if (m_connection.isXwayland()) // no click on the item follows
        emit left();
    else if (m_popup != nullptr) {
        const QPoint pointer = m_presses.pointer(m_connection.screen().root).onRoot;
        if (!frameOnRoot().contains(pointer))
            emit pressed(logicalPosition(pointer));
    }
}

void X11PopupWatch::handleFocusLoss()
{
    // Where presses are not reported, a press that moves the focus is told by the button held down.
    const X11Presses::Pointer pointer = m_presses.pointer(m_connection.screen().root);
    if (!m_presses.isAvailable() && pointer.isButtonDown)
        emit pressed(logicalPosition(pointer.onRoot));
    else
        emit left();
}
