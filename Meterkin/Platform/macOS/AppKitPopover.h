#pragma once

#include "Platform/PopoverContainer.h"
#include "Platform/ReopenGuard.h"
#include "Platform/macOS/PopoverQuickWindow.h"

#include <QElapsedTimer>
#include <QTimer>

/// The system's popover, on the button of the status item. Window and content live from the first
/// show until some time after the last.
class AppKitPopover : public QObject, public PopoverContainer {
    Q_OBJECT

public:
    /// The native view of the button; 0 while there is none, and nothing is shown then.
    using FindButton = std::function<WId()>;

    explicit AppKitPopover(FindButton findButton, QObject *parent = nullptr);
    ~AppKitPopover() override;

    void setContent(MakeContent make) override;
    bool isShown() const override;
    // Where the button is, the system knows better than the rectangles.
    bool swallowsClick(const QRect &item) override;
    void show(const QRect &item) override;
    void close() override;

    /// For the system's report that it closes the popover, whoever has asked for it.
    void handleClosing();
    /// Likewise, once nothing of it is seen any more.
    void handleClosed();

private:
    struct Objects;

    void makePopover();
    void makeWindow();
    void fit();
    void watchButtons();
    void forget();

    FindButton m_findButton;
    std::unique_ptr<Objects> m_objects; ///< once there has been content
    MakeContent m_make;
    std::unique_ptr<PopoverQuickWindow> m_window;
    bool m_isClosingItself = false;
    int m_room = 0; ///< height that the screen leaves, points
    ReopenGuard m_guard;
    QElapsedTimer m_clock;
    QTimer m_fitSoon{this};
    QTimer m_watchButtons{this};
    QTimer m_forgetLater{this};
};
