#include "Platform/Linux/Tray/PanelWindow.h"

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>

#include <algorithm>

namespace {

constexpr int Distance = 16; // logical pixels from the anchor: about half a panel
constexpr int FontSize = 13; // logical pixels

} // namespace

QFont PanelWindow::font()
{
    QFont font;
    font.setPixelSize(FontSize);
    return font;
}

QRect PanelWindow::beside(QPoint anchor, QSize size)
{
    const QScreen *screen = QGuiApplication::screenAt(anchor);
    if (screen == nullptr)
        screen = QGuiApplication::primaryScreen();
    const QRect area = screen->geometry();
    const bool below = anchor.y() < area.center().y();
    const int top = below ? anchor.y() + Distance : anchor.y() - Distance - size.height();
    const int left = anchor.x() - size.width() / 2;
    return QRect(
        QPoint(
            std::clamp(left, area.left(), std::max(area.left(), area.right() + 1 - size.width())),
            std::clamp(top, area.top(), std::max(area.top(), area.bottom() + 1 - size.height()))),
        size);
}

void PanelWindow::paintBackground(QPainter &painter, QSize size)
{
    const QRect all(QPoint(), size);
    painter.fillRect(all, border);
    painter.fillRect(all.adjusted(1, 1, -1, -1), background);
}
