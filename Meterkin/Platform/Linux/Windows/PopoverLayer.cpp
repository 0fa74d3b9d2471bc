#include "Platform/Linux/Windows/PopoverLayer.h"

#include "Platform/Linux/Windows/PlasmaWorkArea.h"
#include "Platform/Linux/Windows/Sway.h"

#include <QGuiApplication>

namespace {

// From the first backdrop on the screen: it is told at once where there is a pointer.
constexpr std::chrono::milliseconds PointerPatience{300};
constexpr QSize PointerSize(1, 1);

/// The part without panels, when only its size is known: they are where the item is. Without one
/// they are at the top and the left.
QRect freePart(const QRect &screen, QSize free, const QRect &item)
{
    const QSize taken = screen.size() - free.boundedTo(screen.size());
    const QPoint centre = screen.center();
    const bool isAtBottom = !item.isEmpty() && item.center().y() > centre.y();
    const bool isAtRight = !item.isEmpty() && item.center().x() > centre.x();
    return screen.adjusted(isAtRight ? 0 : taken.width(), isAtBottom ? 0 : taken.height(),
                           isAtRight ? -taken.width() : 0, isAtBottom ? -taken.height() : 0);
}

} // namespace

PopoverLayer::PopoverLayer(LayerShell &shell, PopoverWindow &window)
    : m_shell(shell)
    , m_window(window)
    , m_surface(shell.makeSurface(window, LayerShell::Kind::Transient))
    , m_plasma(std::make_unique<PlasmaWorkArea>())
{
    m_pointerPatience.setSingleShot(true);
    m_pointerPatience.setInterval(PointerPatience);
    connect(&m_pointerPatience, &QTimer::timeout, this,
            [this] { openOn(QGuiApplication::screenAt(m_item.center())); });
    connect(&m_backdrops, &LayerBackdrops::shown, this, [this] {
        if (m_screen == nullptr)
            m_pointerPatience.start();
    });
    connect(&m_backdrops, &LayerBackdrops::pointerFound, this, &PopoverLayer::findPointer);
    connect(&m_backdrops, &LayerBackdrops::pressed, this, &PopoverLayer::dismissed);
    connect(m_surface.get(), &LayerSurface::measured, this, &PopoverLayer::measure);
    connect(m_plasma.get(), &PlasmaWorkArea::found, this, &PopoverLayer::settle);
    connect(m_surface.get(), &LayerSurface::ready, this, &PopoverLayer::ready);
    connect(m_surface.get(), &LayerSurface::closed, this, &PopoverLayer::dismissed);
}

PopoverLayer::~PopoverLayer() = default;

void PopoverLayer::open(const QRect &item)
{
    m_item = item;
    m_pointer = QRect();
    m_screen = nullptr;
    m_isOpen = true;
    m_backdrops.open(m_shell);
}

void PopoverLayer::findPointer(QScreen &screen, QPoint position)
{
    if (m_screen != nullptr)
        return;
    m_pointer = QRect(screen.geometry().topLeft() + position, PointerSize);
    openOn(&screen);
}

void PopoverLayer::openOn(QScreen *screen)
{
    m_pointerPatience.stop();
    m_screen = screen != nullptr ? screen : QGuiApplication::primaryScreen();
    m_surface->open(m_screen);
}

void PopoverLayer::measure(QSize free)
{
    if (m_screen == nullptr)
        return;
    m_free = free;
    if (free == m_screen->size()) // no panel, or none in the layer shell
        m_plasma->ask(*m_screen);
    else
        settle(QRect());
}

void PopoverLayer::settle(const QRect &plasmaArea)
{
    if (m_screen == nullptr || !m_isOpen)
        return;
    const QRect screen = m_screen->geometry();
    const QRect plasma = plasmaArea.intersected(screen);
    const auto available = [&](const QRect &item) {
        return plasma.isEmpty() ? freePart(screen, m_free, item) : plasma;
    };
    if (!m_pointer.isEmpty() && !available(m_pointer).contains(m_pointer))
        m_item = m_seenItem = m_pointer;
    QRect item = m_item;
    if (!screen.contains(item)) {
        const QRect sway = swayFreeGeometry(*m_screen); // knows at which side its bar is
        const QRect area = sway.isEmpty() ? available(QRect()) : sway;
        item = likelyItem(screen, area, area.center(), QRect());
    }
    m_layerArea = freePart(screen, m_free, item);
    m_surroundings = {item, QRect(), screen, available(item)};
    place();
}

void PopoverLayer::place()
{
    if (m_screen == nullptr || m_surroundings.screen.isEmpty())
        return;
    const PopoverPlace place = placePopover(m_surroundings, m_window.contentSize());
    m_window.place(place, *m_screen);
    m_backdrops.spare(*m_screen, place.frame);
    const int shadow = m_window.frameRect().left();
    const QRect window = place.frame.adjusted(-shadow, -shadow, shadow, shadow);
    const QMargins distances(window.left() - m_layerArea.left(), window.top() - m_layerArea.top(),
                             m_layerArea.right() - window.right(),
                             m_layerArea.bottom() - window.bottom());
    const Qt::Edges edges = (place.side == PanelSide::Bottom ? Qt::BottomEdge : Qt::TopEdge)
        | (place.side == PanelSide::Right ? Qt::RightEdge : Qt::LeftEdge);
    m_surface->place({edges, distances, window.size()});
}

void PopoverLayer::close()
{
    m_isOpen = false;
    m_pointerPatience.stop();
    m_plasma->cancel();
    m_surroundings = {};
    m_surface->close();
    m_backdrops.close();
}
