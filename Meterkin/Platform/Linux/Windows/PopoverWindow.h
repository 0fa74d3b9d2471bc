#pragma once

#include "Platform/Linux/Windows/PopoverFrame.h"
#include "Platform/Linux/Windows/PopoverPlacement.h"

#include <QQuickWindow>
#include <QVariantAnimation>

#include <memory>

/// The window of a popover: frame, content and the animation of both.
class PopoverWindow : public QQuickWindow {
    Q_OBJECT

public:
    PopoverWindow(std::unique_ptr<QQuickItem> content, FrameStyle style, Qt::WindowFlags flags);
    ~PopoverWindow() override;

    FrameStyle style() const { return m_frame->style(); }
    /// The size that the content asks for; the shadow comes on top.
    QSize contentSize() const;
    /// Fits frame and content into a place on that screen.
    void place(const PopoverPlace &place, QScreen &screen);
    /// Between the visible frame and the window's edges, logical pixels.
    int margin() const { return m_frame->margin(); }
    /// The visible frame within the window, logical pixels.
    QRect frameRect() const;

    void animateIn();
    /// hidden() follows.
    void animateOut();

signals:
    void exposed();
    void hidden();

protected:
    void exposeEvent(QExposeEvent *event) override;

private:
    void animate(qreal target, int milliseconds);
    void setProgress(qreal progress);

    std::unique_ptr<QQuickItem> m_stage; ///< moves while animated
    PopoverFrame *m_frame = nullptr; ///< child of the stage
    std::unique_ptr<QQuickItem> m_content;
    PanelSide m_side = PanelSide::Top;
    QVariantAnimation m_animation;
    qreal m_progress = 0; ///< 0 hidden, 1 shown
};
