#include "Platform/Linux/Tray/ItemToolTip.h"

#include "Platform/Linux/Tray/PanelWindow.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QPainter>
#include <QScreen>

#include <utility>

namespace {

constexpr std::chrono::milliseconds Delay{500};
constexpr int Padding = 9; // logical pixels

} // namespace

ItemToolTip::ItemToolTip(std::function<QString()> source)
    : m_source(std::move(source))
{
    setFlags(Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus
             | Qt::WindowTransparentForInput);
    m_delay.setSingleShot(true);
    m_delay.setInterval(Delay);
    connect(&m_delay, &QTimer::timeout, this, &ItemToolTip::appear);
    m_layer = PanelWindow::makeLayer(*this, LayerShell::Kind::Resident, m_place);
    if (m_layer) {
        connect(m_layer.get(), &LayerSurface::closed, this, &ItemToolTip::dismiss);
        setMask(QRect(-1, -1, 1, 1)); // only this way Qt keeps presses from it there
    }
}

void ItemToolTip::refresh()
{
    if (!isVisible())
        return;
    readText();
    update();
}

void ItemToolTip::schedule(QPoint anchor)
{
    m_anchor = anchor;
    m_delay.start();
}

void ItemToolTip::dismiss()
{
    m_delay.stop();
    if (m_layer)
        m_layer->close();
    else
        hide();
}

void ItemToolTip::appear()
{
    readText();
    if (m_layer)
        m_layer->open(QGuiApplication::screenAt(m_anchor));
    else
        show();
}

void ItemToolTip::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    PanelWindow::paintBackground(painter, size());
    painter.setFont(PanelWindow::font());
    painter.setPen(PanelWindow::text);
    painter.setLayoutDirection(QGuiApplication::layoutDirection());
    painter.drawText(QRect(QPoint(), size()).marginsRemoved({Padding, Padding, Padding, Padding}),
                     Qt::AlignLeft, m_text);
}

void ItemToolTip::readText()
{
    m_text = m_source();
    const QFontMetrics metrics(PanelWindow::font());
    const QSize size = metrics.size(0, m_text) + QSize(2 * Padding, 2 * Padding);
    m_place = PanelWindow::beside(m_anchor, size);
    setGeometry(m_place);
}
