#pragma once

#include <QObject>
#include <QPoint>
#include <QRect>

#include <optional>

class QWindow;

/// Tells a popup what the user does elsewhere, where Qt does not, and keeps the keyboard with it.
/// This class itself, for a session without an X server, leaves that to the compositor. Main thread
/// only.
class PopupWatch : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Reports until stop(). The popup is on the screen; `frame` is the part of it that counts, in
    /// its logical pixels. To be called again when either moves.
    virtual void start(const QWindow & /*popup*/, const QRect & /*frame*/) { }
    /// A release of a button that is down now is still reported. The keyboard stays where it is.
    virtual void stop() { }

    /// For a popup past the window manager that is on the screen.
    virtual void takeKeyboard(QWindow & /*popup*/) { }
    /// To the window that had it before, unless another one has got it since.
    virtual void giveKeyboardBack() { }

signals:
    /// A button outside of the frame, at that place in logical pixels of the desktop, if it is
    /// known. A click on a panel's item may follow.
    void pressed(std::optional<QPoint> place);
    void released();
    /// The user has turned to something else; no click follows.
    void left();
};
