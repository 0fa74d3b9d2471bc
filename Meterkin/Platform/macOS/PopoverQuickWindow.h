#pragma once

#include <QQuickWindow>

#include <memory>

/// The inside of a popover: a transparent window, filled by the content, whose native view the
/// popover holds.
class PopoverQuickWindow : public QQuickWindow {
    Q_OBJECT

public:
    explicit PopoverQuickWindow(std::unique_ptr<QQuickItem> content);
    ~PopoverQuickWindow() override;

    /// Takes the size that the content asks for, at most `room` high, and returns it.
    QSize fit(int room);
    /// Gives the keyboard to the content.
    void focusContent();

private:
    std::unique_ptr<QQuickItem> m_content;
};
