#pragma once

#include "Platform/Linux/Display/PopupWatch.h"
#include "Platform/Linux/X11/Focus.h"

#include <QPointer>
#include <QWindow>

/// Watches a popup by the pressed buttons and by the focus.
class X11PopupWatch : public PopupWatch {
    Q_OBJECT

public:
    /// The connection outlives it and may be closed.
    explicit X11PopupWatch(X11Connection &connection, QObject *parent = nullptr);

    void start(const QWindow &popup, const QRect &frame) override;
    void stop() override;
    void takeKeyboard(QWindow &popup) override;
    void giveKeyboardBack() override { m_focus.giveBack(); }

private:
    QRect frameOnRoot() const;
    void handlePress();
    void handleFocusLoss();

    X11Connection &m_connection;
    X11Presses m_presses;
    X11Focus m_focus;
    QPointer<const QWindow> m_popup;
    QRect m_frame; ///< in the popup's logical pixels
    QPointer<QWindow> m_grabber; ///< a popup that holds the keyboard by a grab
};
