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
    /// Brings a shown window to the front of all programs' and gives it the keyboard.
    virtual void activate(QQuickWindow &window) = 0;
};
