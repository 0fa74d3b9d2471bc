#include "Platform/Linux/Windows/PopoverLayer.h"

#include <QGuiApplication>
#include <QRasterWindow>

#include <algorithm>
#include <limits>

namespace {

/// Null where several screens may be meant: some panels count from their own screen's corner.
QScreen *screenOf(const QRect &item)
{
    const QList<QScreen *> screens = QGuiApplication::screens();
    if (screens.size() == 1)
        return screens.first();
    QScreen *screen = item.isEmpty() ? nullptr : QGuiApplication::screenAt(item.center());
    const auto canBeOn = [&item](const QScreen *one) {
        return QRect(QPoint(), one->size()).contains(item.center());
    };
    return std::none_of(screens.begin(), screens.end(), canBeOn) ? screen : nullptr;
}

/// Of a screen that has that much room beside its panels, the one with the least beside that.
QScreen *likelyScreen(QSize free)
{
    const auto rest = [free](const QScreen *screen) {
        const QSize taken = screen->size() - free;
        return taken.width() < 0 || taken.height() < 0 ? std::numeric_limits<int>::max()
                                                       : taken.width() + taken.height();
    };
    const QList<QScreen *> screens = QGuiApplication::screens();
    return *std::min_element(
        screens.begin(), screens.end(),
        [rest](const QScreen *one, const QScreen *other) { return rest(one) < rest(other); });
}

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

/// Takes the presses on a screen.
class PopoverLayer::Backdrop : public QRasterWindow {
public:
    Backdrop(PopoverLayer &layer, QScreen *screen)
        : m_layer(layer)
    {
        QSurfaceFormat format;
        format.setAlphaBufferSize(8);
        setFormat(format);
        setFlags(Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
        resize(1, 1);
        m_surface = layer.m_shell.makeSurface(*this, LayerShell::Kind::Backdrop);
        connect(m_surface.get(), &LayerSurface::measured, this, [this](QSize size) {
            m_surface->place(
                {Qt::TopEdge | Qt::LeftEdge | Qt::BottomEdge | Qt::RightEdge, {}, size});
        });
        connect(m_surface.get(), &LayerSurface::ready, this, &QWindow::show);
        m_surface->open(screen);
    }

protected:
    void mousePressEvent(QMouseEvent * /*event*/) override { emit m_layer.dismissed(); }

private:
    PopoverLayer &m_layer;
    std::unique_ptr<LayerSurface> m_surface;
};

PopoverLayer::PopoverLayer(LayerShell &shell, PopoverWindow &window)
    : m_window(window)
    , m_surface(shell.makeSurface(window, LayerShell::Kind::Transient))
    , m_shell(shell)
{
    connect(m_surface.get(), &LayerSurface::measured, this, &PopoverLayer::measure);
    connect(m_surface.get(), &LayerSurface::ready, this, &PopoverLayer::ready);
    connect(m_surface.get(), &LayerSurface::closed, this, &PopoverLayer::dismissed);
}

PopoverLayer::~PopoverLayer() = default;

void PopoverLayer::open(const QRect &item)
{
    m_item = item;
    m_screen = screenOf(item);
    m_isOpen = true;
    // First, since a compositor stacks surfaces in the order of their making.
    for (QScreen *screen : QGuiApplication::screens())
        m_backdrops.push_back(std::make_unique<Backdrop>(*this, screen));
    m_surface->open(m_screen);
}

void PopoverLayer::measure(QSize free)
{
    if (m_screen == nullptr)
        m_screen = likelyScreen(free);
    const QRect screen = m_screen->geometry();
    QRect item = m_item;
    if (!item.isEmpty() && !screen.contains(item.center()))
        item.translate(screen.topLeft()); // it counts from the screen's corner
    const QRect available = freePart(screen, free, item);
    if (item.isEmpty())
        item = likelyItem(screen, available, available.center(), QRect());
    m_surroundings = {item, QRect(), screen, available};
    place();
}

void PopoverLayer::place()
{
    if (m_screen == nullptr || m_surroundings.screen.isEmpty())
        return;
    const PopoverPlace place = placePopover(m_surroundings, m_window.contentSize());
    m_window.place(place, *m_screen);
    const int shadow = m_window.frameRect().left();
    const QRect window = place.frame.adjusted(-shadow, -shadow, shadow, shadow);
    const QRect &free = m_surroundings.available;
    const QMargins distances(window.left() - free.left(), window.top() - free.top(),
                             free.right() - window.right(), free.bottom() - window.bottom());
    const Qt::Edges edges = (place.side == PanelSide::Bottom ? Qt::BottomEdge : Qt::TopEdge)
        | (place.side == PanelSide::Right ? Qt::RightEdge : Qt::LeftEdge);
    m_surface->place({edges, distances, window.size()});
}

void PopoverLayer::close()
{
    m_isOpen = false;
    m_surroundings = {};
    m_surface->close();
    m_backdrops.clear();
}
