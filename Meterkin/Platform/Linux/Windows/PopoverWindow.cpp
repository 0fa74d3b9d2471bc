#include "Platform/Linux/Windows/PopoverWindow.h"

#include "Views/WindowContent.h"

#include <QSignalBlocker>

#include <cmath>
#include <utility>

namespace {

constexpr int InMilliseconds = 160;
constexpr int OutMilliseconds = 110;
constexpr qreal Slide = 6; // logical pixels, from the panel's side
constexpr qreal FirstProgress = 0.2; // so that the first frame shows something

} // namespace

PopoverWindow::PopoverWindow(std::unique_ptr<QQuickItem> content, FrameStyle style,
                             Qt::WindowFlags flags)
    : m_stage(std::make_unique<QQuickItem>(contentItem()))
    , m_frame(new PopoverFrame(style, m_stage.get()))
    , m_content(std::move(content))
{
    setTitle(QStringLiteral("meterkin"));
    setFlags(flags);
    m_content->setParentItem(style == FrameStyle::Rounded ? m_stage.get() : contentItem());
    m_content->setPosition(QPointF(m_frame->margin(), m_frame->margin()));
    const auto paintBackground = [this] {
        // So that an opaque window has the right colour before its first frame.
        setColor(m_frame->style() == FrameStyle::Rounded ? QColor(Qt::transparent)
                                                         : m_frame->background());
    };
    connect(m_frame, &PopoverFrame::backgroundChanged, this, paintBackground);
    m_frame->follow(*m_content);

    connect(&m_animation, &QVariantAnimation::valueChanged, this,
            [this](const QVariant &value) { setProgress(value.toReal()); });
    connect(&m_animation, &QVariantAnimation::finished, this, [this] {
        if (m_progress <= 0)
            emit hidden();
    });
}

PopoverWindow::~PopoverWindow()
{
    m_content.reset(); // it may refer to the window
}

QSize PopoverWindow::contentSize() const
{
    return wantedSize(*m_content);
}

void PopoverWindow::place(const PopoverPlace &place, QScreen &screen)
{
    m_side = place.side;
    const int margin = m_frame->margin();
    const QRect window = place.frame.adjusted(-margin, -margin, margin, margin);
    setScreen(&screen);
    setGeometry(window);
    m_stage->setSize(window.size());
    m_frame->setSize(window.size());
    m_content->setSize(place.frame.size());
    setProgress(m_progress);
}

QRect PopoverWindow::frameRect() const
{
    const int margin = m_frame->margin();
    return QRect(QPoint(), size()).adjusted(margin, margin, -margin, -margin);
}

void PopoverWindow::animateIn()
{
    if (m_progress <= 0)
        setProgress(FirstProgress);
    m_content->forceActiveFocus(Qt::PopupFocusReason);
    animate(1, InMilliseconds);
}

void PopoverWindow::animateOut()
{
    animate(0, OutMilliseconds);
}

void PopoverWindow::exposeEvent(QExposeEvent *event)
{
    QQuickWindow::exposeEvent(event);
    if (isExposed())
        emit exposed();
}

void PopoverWindow::animate(qreal target, int milliseconds)
{
    m_animation.stop();
    {
        // A finished one would jump to its new end.
        const QSignalBlocker blocker(m_animation);
        m_animation.setStartValue(m_progress);
        m_animation.setEndValue(target);
        m_animation.setDuration(
            static_cast<int>(std::lround(std::abs(target - m_progress) * milliseconds)));
        m_animation.setEasingCurve(QEasingCurve::OutCubic);
    }
    m_animation.start();
}

void PopoverWindow::setProgress(qreal progress)
{
    m_progress = progress;
    if (m_frame->style() == FrameStyle::Square) {
        m_content->setOpacity(progress);
        return;
    }
    m_stage->setOpacity(progress);
    const qreal distance = (1 - progress) * Slide;
    switch (m_side) {
    case PanelSide::Top:
        m_stage->setPosition(QPointF(0, -distance));
        break;
    case PanelSide::Bottom:
        m_stage->setPosition(QPointF(0, distance));
        break;
    case PanelSide::Left:
        m_stage->setPosition(QPointF(-distance, 0));
        break;
    case PanelSide::Right:
        m_stage->setPosition(QPointF(distance, 0));
        break;
    }
}
