#pragma once

#include "Platform/PopoverContainer.h"
#include "Platform/ReopenGuard.h"
#include "Platform/macOS/Windows/PopoverWindow.h"

#include <QElapsedTimer>
#include <QTimer>

/// An NSPopover at the button of the status item. Its window and content are made when it is first
/// shown and destroyed some time after it has closed.
class MacPopoverContainer : public QObject, public PopoverContainer {
    Q_OBJECT

public:
    /// The identifier of the button's view; 0 while there is none: nothing is shown then.
    using FindButton = std::function<WId()>;

    explicit MacPopoverContainer(FindButton findButton, QObject *parent = nullptr);
    ~MacPopoverContainer() override;

    void setContent(MakeContent make) override;
    bool isShown() const override;
    // The rectangles are ignored: AppKit knows where the button is.
    bool swallowsClick(const QRect &item) override;
    void show(const QRect &item) override;
    void close() override;

    /// The popover begins to close, whoever closes it. Called by its delegate.
    void handleClosing();
    /// The popover is no longer visible. Called by its delegate.
    void handleClosed();

private:
    struct Objects;

    void makePopover();
    void makeWindow();
    void fit();
    void watchButtons();
    void forget();

    FindButton m_findButton;
    std::unique_ptr<Objects> m_objects; ///< null before the first content
    MakeContent m_make;
    std::unique_ptr<MacPopoverWindow> m_window;
    bool m_isClosingItself = false;
    int m_room = 0; ///< points, the height available on the screen
    ReopenGuard m_guard;
    QElapsedTimer m_clock;
    QTimer m_fitSoon{this};
    QTimer m_watchButtons{this};
    QTimer m_forgetLater{this};
};
