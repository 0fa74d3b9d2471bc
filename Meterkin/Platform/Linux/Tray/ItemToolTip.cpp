#include "Platform/Linux/Tray/ItemToolTip.h"

#include "Platform/Linux/Tray/PanelPopup.h"
#include "Platform/Linux/Tray/PanelStyle.h"

#include <QFontMetrics>
#include <QPainter>

namespace {

constexpr int DelayMilliseconds = 500;
constexpr int Padding = 9; // logical pixels

} // namespace

ItemToolTip::ItemToolTip()
{
    setFlags(Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus
             | Qt::WindowTransparentForInput);
    m_delay.setSingleShot(true);
    m_delay.setInterval(DelayMilliseconds);
    connect(&m_delay, &QTimer::timeout, this, [this] {
        fit();
        show();
    });
}

void ItemToolTip::setText(const QString &text)
{
    m_text = text;
    if (isVisible()) {
        fit();
        update();
    }
}

void ItemToolTip::schedule(QPoint anchor)
{
    m_anchor = anchor;
    m_delay.start();
}

void ItemToolTip::dismiss()
{
    m_delay.stop();
    hide();
}

void ItemToolTip::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    PanelPopup::paintBackground(painter, size());
    painter.setFont(PanelPopup::font());
    painter.setPen(PanelStyle::text);
    painter.drawText(QRect(QPoint(), size()).marginsRemoved({Padding, Padding, Padding, Padding}),
                     Qt::AlignLeft, m_text);
}

void ItemToolTip::fit()
{
    const QFontMetrics metrics(PanelPopup::font());
    const QSize size = metrics.size(0, m_text) + QSize(2 * Padding, 2 * Padding);
    setGeometry(PanelPopup::beside(m_anchor, size));
}
