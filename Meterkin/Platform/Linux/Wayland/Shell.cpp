#include "Platform/Linux/Wayland/Shell.h"

#include "Platform/Linux/Wayland/QtHandles.h"
#include "Platform/Linux/Wayland/Surface.h"
#include "Platform/Log.h"

#include <QGuiApplication>

#include <algorithm>

namespace {

constexpr std::uint32_t KnownVersion = 4; // of the layer shell
constexpr std::uint32_t DestroyVersion = 3; // from which on it may be destroyed

} // namespace

WaylandLayerShell::WaylandLayerShell()
    : m_registry(wl_display_get_registry(waylandDisplay()))
    , m_question(wl_display_sync(waylandDisplay()))
{
    static constexpr wl_registry_listener registryListener{
        [](void *shell, wl_registry * /*registry*/, std::uint32_t name, const char *interface,
           std::uint32_t version) {
            static_cast<WaylandLayerShell *>(shell)->bind(name, interface, version);
        },
        [](void * /*shell*/, wl_registry * /*registry*/, std::uint32_t /*name*/) {}};
    static constexpr wl_callback_listener answerListener{
        [](void *data, wl_callback * /*callback*/, std::uint32_t /*serial*/) {
            auto *shell = static_cast<WaylandLayerShell *>(data);
            shell->m_question.reset();
            qCDebug(logWindows, "The compositor has a layer shell: %d", *shell->isAvailable());
            emit shell->known();
        }};
    wl_registry_add_listener(m_registry.get(), &registryListener, this);
    wl_callback_add_listener(m_question.get(), &answerListener, this);
    // The plugin ends after the connection.
    connect(qGuiApp, &QObject::destroyed, this, &WaylandLayerShell::forget);
}

WaylandLayerShell::~WaylandLayerShell() = default;

std::optional<bool> WaylandLayerShell::isAvailable() const
{
    return m_question ? std::nullopt : std::optional(m_shell && m_viewporter);
}

std::unique_ptr<LayerSurface> WaylandLayerShell::makeSurface(QWindow &window, Kind kind)
{
    return std::make_unique<WaylandLayerSurface>(window, kind, *m_shell, *m_viewporter);
}

void WaylandLayerShell::bind(std::uint32_t name, QByteArrayView interface, std::uint32_t version)
{
    const auto bound = [&](const wl_interface &type, std::uint32_t known) {
        return wl_registry_bind(m_registry.get(), name, &type, std::min(version, known));
    };
    if (interface == zwlr_layer_shell_v1_interface.name && version >= DestroyVersion)
        m_shell.reset(
            static_cast<zwlr_layer_shell_v1 *>(bound(zwlr_layer_shell_v1_interface, KnownVersion)));
    else if (interface == wp_viewporter_interface.name)
        m_viewporter.reset(static_cast<wp_viewporter *>(bound(wp_viewporter_interface, 1)));
}

void WaylandLayerShell::forget()
{
    m_question.reset();
    m_shell.reset();
    m_viewporter.reset();
    m_registry.reset();
}
