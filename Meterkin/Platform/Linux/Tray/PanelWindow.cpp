#include "Platform/Linux/Tray/PanelWindow.h"

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QWindow>

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

std::unique_ptr<LayerSurface> PanelWindow::makeLayer(QWindow &window, LayerShell::Kind kind,
                                                     const QRect &place)
{
    LayerShell *shell = layerShell();
    if (shell == nullptr || !shell->isAvailable().value_or(false))
        return nullptr;
    window.setFlag(Qt::BypassWindowManagerHint);
    std::unique_ptr<LayerSurface> surface = shell->makeSurface(window, kind);
    QObject::connect(
        surface.get(), &LayerSurface::measured, &window, [&window, &place, layer = surface.get()] {
            const QPoint corner = place.topLeft() - window.screen()->geometry().topLeft();
            layer->place(
                {Qt::TopEdge | Qt::LeftEdge, QMargins(corner.x(), corner.y(), 0, 0), place.size()});
        });
    QObject::connect(surface.get(), &LayerSurface::ready, &window, &QWindow::show);
    return surface;
}

void PanelWindow::paintBackground(QPainter &painter, QSize size)
{
    const QRect all(QPoint(), size);
    painter.fillRect(all, border);
    painter.fillRect(all.adjusted(1, 1, -1, -1), background);
}
