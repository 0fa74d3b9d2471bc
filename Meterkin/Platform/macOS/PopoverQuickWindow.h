#pragma once

#include <QQuickWindow>

#include <memory>

/// What a popover holds: a see-through window, which has its view elsewhere, filled by the content.
class PopoverQuickWindow : public QQuickWindow {
    Q_OBJECT

public:
    explicit PopoverQuickWindow(std::unique_ptr<QQuickItem> content);
    ~PopoverQuickWindow() override;

    /// Takes the size that the content asks for, no higher than `room`, and returns it.
    QSize fit(int room);
    /// Gives the keyboard to the content.
    void focusContent();

signals:
    void wantedSizeChanged();
    /// Escape, which the content had no use for.
    void dismissed();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    std::unique_ptr<QQuickItem> m_content;
};
