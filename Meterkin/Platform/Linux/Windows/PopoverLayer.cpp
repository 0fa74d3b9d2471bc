#include "Platform/Linux/Windows/PopoverLayer.h"

#include "Platform/Linux/Windows/PlasmaWorkArea.h"

#include <QGuiApplication>
#include <QRasterWindow>

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

/// Takes the presses on a screen.
class PopoverLayer::Backdrop : public QRasterWindow {
public:
    Backdrop(PopoverLayer &layer, QScreen &screen)
        : m_layer(layer)
        , m_surface(layer.m_shell.makeSurface(*this, LayerShell::Kind::Backdrop))
    {
        QSurfaceFormat format;
        format.setAlphaBufferSize(8);
        setFormat(format);
        setFlags(Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
        resize(1, 1);
        connect(m_surface.get(), &LayerSurface::measured, this, [this](QSize size) {
            m_surface->place(
                {Qt::TopEdge | Qt::LeftEdge | Qt::BottomEdge | Qt::RightEdge, {}, size});
        });
        connect(m_surface.get(), &LayerSurface::ready, this, [this] {
            show();
            if (m_layer.m_screen == nullptr)
                m_layer.m_pointerPatience.start();
        });
        m_surface->open(&screen);
    }

protected:
    bool event(QEvent *event) override
    {
        if (event->type() == QEvent::Enter)
            m_layer.findPointer(*screen(), static_cast<QEnterEvent *>(event)->position().toPoint());
        return QRasterWindow::event(event);
    }

    void mousePressEvent(QMouseEvent * /*event*/) override { emit m_layer.dismissed(); }

private:
    PopoverLayer &m_layer;
    const std::unique_ptr<LayerSurface> m_surface;
};

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
    for (QScreen *screen : QGuiApplication::screens())
        m_backdrops.push_back(std::make_unique<Backdrop>(*this, *screen));
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
    // After the backdrops, since a compositor stacks surfaces in the order of their making.
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
        const QRect area = available(QRect());
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
    m_backdrops.clear();
}
