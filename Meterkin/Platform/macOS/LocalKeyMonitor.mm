#include "Platform/macOS/LocalKeyMonitor.h"

#import <AppKit/AppKit.h>

#include <utility>

struct LocalKeyMonitor::Objects {
    id monitor; ///< nil when none is installed
};

LocalKeyMonitor::LocalKeyMonitor()
    : m_objects(std::make_unique<Objects>())
{
}

LocalKeyMonitor::~LocalKeyMonitor()
{
    remove();
}

void LocalKeyMonitor::install(std::function<bool(const KeyDown &)> handler)
{
    remove();
    const auto shared =
        std::make_shared<const std::function<bool(const KeyDown &)>>(std::move(handler));
    m_objects->monitor = [NSEvent
        addLocalMonitorForEventsMatchingMask:NSEventMaskKeyDown
                                     handler:^NSEvent *(NSEvent *event) {
                                         // It may remove the monitor, and this block with it.
                                         // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
                                         const auto running = shared;
                                         const bool isSwallowed = (*running)(
                                             {event.keyCode,
                                              static_cast<std::uint32_t>(event.modifierFlags)});
                                         return isSwallowed ? nil : event;
                                     }];
}

void LocalKeyMonitor::remove()
{
    if (m_objects->monitor == nil)
        return;
    [NSEvent removeMonitor:m_objects->monitor];
    m_objects->monitor = nil;
}
