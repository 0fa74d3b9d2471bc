#pragma once

#include <QQuickWindow>

#include <memory>

/// The transparent Quick window whose view is embedded in the popover; the content fills it.
class MacPopoverWindow : public QQuickWindow {
    Q_OBJECT

public:
    explicit MacPopoverWindow(std::unique_ptr<QQuickItem> content);
    ~MacPopoverWindow() override;

    /// Takes the size that the content asks for, at most `room` points high, and returns it.
    QSize fit(int room);
    /// Gives the keyboard focus to the content.
    void focusContent();

private:
    std::unique_ptr<QQuickItem> m_content;
};
