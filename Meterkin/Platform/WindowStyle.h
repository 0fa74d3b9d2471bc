#pragma once

class QQuickWindow;

/// What a system does its own way about the program's windows. Main thread only.
class WindowStyle {
public:
    enum class TitleBar { None, System };

    virtual ~WindowStyle() = default;

    /// Before the window is first shown: a title bar with a close button, neither resized nor
    /// minimised.
    virtual void makeTitled(QQuickWindow &window) = 0;
    /// Likewise: content up to its edges, no visible title bar, above ordinary windows. None: the
    /// content has to bring a close button.
    virtual TitleBar makeOnboarding(QQuickWindow &window) = 0;
    /// Shows a window that the user asks for, also one that is open already: where the user works
    /// now, in front of all programs' windows, with the keyboard.
    virtual void present(QQuickWindow &window) = 0;
    /// Shows a window that appears by itself. It asks for no keyboard where a system leaves that to
    /// the program: the user may be typing in another one.
    virtual void presentUnasked(QQuickWindow &window) = 0;
};
