#include "Platform/Linux/Tray/PanelPopup.h"

#include "Platform/Linux/Tray/PanelStyle.h"

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>

#include <algorithm>

namespace {

constexpr int Distance = 16; // logical pixels from the anchor: about half a panel

} // namespace

QFont PanelPopup::font()
{
    QFont font;
    font.setPixelSize(PanelStyle::fontSize);
    return font;
}

QRect PanelPopup::beside(QPoint anchor, QSize size)
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

void PanelPopup::paintBackground(QPainter &painter, QSize size)
{
    const QRect all(QPoint(), size);
    painter.fillRect(all, PanelStyle::border);
    painter.fillRect(all.adjusted(1, 1, -1, -1), PanelStyle::background);
}
