#include "Platform/Linux/Wayland/Surface.h"

#include "Platform/Linux/Wayland/QtHandles.h"

#include <QPlatformSurfaceEvent>
#include <QWindow>

namespace {

constexpr std::uint32_t AllEdges = ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP
    | ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM | ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT
    | ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT;

// The zones of a surface that keeps clear of panels, and of one that does not.
constexpr int BesidePanels = 0;
constexpr int OverPanels = -1;

std::uint32_t anchor(Qt::Edges edges)
{
    std::uint32_t anchor = 0;
    for (const auto &[edge, bit] : {std::pair(Qt::TopEdge, ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP),
                                    {Qt::BottomEdge, ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM},
                                    {Qt::LeftEdge, ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT},
                                    {Qt::RightEdge, ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT}})
        anchor |= edges & edge ? bit : 0;
    return anchor;
}

} // namespace

WaylandLayerSurface::WaylandLayerSurface(QWindow &window, LayerShell::Kind kind,
                                         zwlr_layer_shell_v1 &shell, wp_viewporter &viewporter)
    : m_window(window)
    , m_kind(kind)
    , m_shell(shell)
    , m_viewporter(viewporter)
{
    window.installEventFilter(this);
}

WaylandLayerSurface::~WaylandLayerSurface()
{
    close();
}

void WaylandLayerSurface::open(QScreen *screen)
{
    close();
    if (screen != nullptr)
        m_window.setScreen(screen);
    m_window.create();
    wl_surface *surface = waylandSurface(m_window);
    const bool isTop = m_kind == LayerShell::Kind::Resident;
    m_layer.reset(zwlr_layer_shell_v1_get_layer_surface(
        &m_shell, surface, screen != nullptr ? waylandOutput(*screen) : nullptr,
        isTop ? ZWLR_LAYER_SHELL_V1_LAYER_TOP : ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY, "meterkin"));
    static constexpr zwlr_layer_surface_v1_listener listener{
        [](void *data, zwlr_layer_surface_v1 * /*layer*/, std::uint32_t serial, std::uint32_t width,
           std::uint32_t height) {
            static_cast<WaylandLayerSurface *>(data)->configure(
                serial, QSize(static_cast<int>(width), static_cast<int>(height)));
        },
        [](void *data, zwlr_layer_surface_v1 * /*layer*/) {
            emit static_cast<WaylandLayerSurface *>(data)->closed();
        }};
    zwlr_layer_surface_v1_add_listener(m_layer.get(), &listener, this);
    const bool isBackdrop = m_kind == LayerShell::Kind::Backdrop;
    zwlr_layer_surface_v1_set_exclusive_zone(m_layer.get(), isBackdrop ? OverPanels : BesidePanels);
    // A transient surface is told of no press elsewhere, so nothing is won by sharing the keyboard.
    zwlr_layer_surface_v1_set_keyboard_interactivity(
        m_layer.get(),
        m_kind == LayerShell::Kind::Transient
            ? ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_EXCLUSIVE
            : ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_NONE);
    zwlr_layer_surface_v1_set_anchor(m_layer.get(), AllEdges);
    zwlr_layer_surface_v1_set_size(m_layer.get(), 0, 0);
    wl_surface_commit(surface);
    m_state = State::Measuring;
}

void WaylandLayerSurface::place(const LayerPlace &place)
{
    if (!m_layer || m_state == State::Measuring)
        return;
    zwlr_layer_surface_v1_set_anchor(m_layer.get(), anchor(place.edges));
    const QMargins &distances = place.distances;
    zwlr_layer_surface_v1_set_margin(m_layer.get(), distances.top(), distances.right(),
                                     distances.bottom(), distances.left());
    zwlr_layer_surface_v1_set_size(m_layer.get(), static_cast<std::uint32_t>(place.size.width()),
                                   static_cast<std::uint32_t>(place.size.height()));
    wl_surface *surface = waylandSurface(m_window);
    if (m_kind == LayerShell::Kind::Backdrop) {
        // Of one pixel, which costs nothing.
        if (!m_viewport)
            m_viewport.reset(wp_viewporter_get_viewport(&m_viewporter, surface));
        wp_viewport_set_destination(m_viewport.get(), place.size.width(), place.size.height());
    }
    wl_surface_commit(surface);
    if (m_state != State::Measured)
        return;
    // The compositor tells of a size only when it is another one.
    m_state = m_configured == place.size ? State::Ready : State::Placing;
    if (m_state == State::Ready)
        emit ready();
}

void WaylandLayerSurface::close()
{
    if (m_state == State::Closed)
        return;
    forget(); // before its surface
    m_window.destroy();
}

bool WaylandLayerSurface::eventFilter(QObject *watched, QEvent *event)
{
    // Qt may do so by itself when screens come and go.
    if (event->type() == QEvent::PlatformSurface && m_state != State::Closed
        && static_cast<QPlatformSurfaceEvent *>(event)->surfaceEventType()
            == QPlatformSurfaceEvent::SurfaceAboutToBeDestroyed) {
        forget();
        emit closed();
    }
    return QObject::eventFilter(watched, event);
}

void WaylandLayerSurface::configure(std::uint32_t serial, QSize size)
{
    zwlr_layer_surface_v1_ack_configure(m_layer.get(), serial);
    m_configured = size;
    if (m_state == State::Measuring) {
        m_state = State::Measured;
        emit measured(size);
    } else if (m_state == State::Placing) {
        m_state = State::Ready;
        emit ready();
    }
}

void WaylandLayerSurface::forget()
{
    m_state = State::Closed;
    m_viewport.reset();
    m_layer.reset();
}
