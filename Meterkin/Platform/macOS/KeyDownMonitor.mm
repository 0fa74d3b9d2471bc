#include "Platform/macOS/KeyDownMonitor.h"

#import <AppKit/AppKit.h>

#include <utility>

struct MacKeyDownMonitor::Objects {
    id monitor; ///< nil when none is installed
};

MacKeyDownMonitor::MacKeyDownMonitor()
    : m_objects(std::make_unique<Objects>())
{
}

MacKeyDownMonitor::~MacKeyDownMonitor()
{
    remove();
}

void MacKeyDownMonitor::install(std::function<bool(const KeyDown &)> handler)
{
    remove();
    const auto shared =
        std::make_shared<const std::function<bool(const KeyDown &)>>(std::move(handler));
    m_objects->monitor = [NSEvent
        addLocalMonitorForEventsMatchingMask:NSEventMaskKeyDown
                                     handler:^NSEvent *(NSEvent *event) {
                                         // It may remove the monitor and so free this block.
                                         // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
                                         const auto running = shared;
                                         const bool isSwallowed = (*running)(
                                             {event.keyCode,
                                              static_cast<std::uint32_t>(event.modifierFlags)});
                                         return isSwallowed ? nil : event;
                                     }];
}

void MacKeyDownMonitor::remove()
{
    if (m_objects->monitor == nil)
        return;
    [NSEvent removeMonitor:m_objects->monitor];
    m_objects->monitor = nil;
}
