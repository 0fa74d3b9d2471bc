#include "Platform/macOS/Platform.h"

#include "Platform/macOS/DiskImages.h"
#include "Platform/macOS/MainBundle.h"
#include "Platform/macOS/Sensors/FanSource.h"
#include "Platform/macOS/Sensors/PageCounters.h"
#include "Platform/macOS/Sensors/ProcessorTicks.h"
#include "Platform/macOS/Sensors/SMCUserClient.h"
#include "Platform/macOS/Windows/WindowSystem.h"
#include "Windows/ApplicationWindows.h"

#include <malloc/malloc.h>

MetricSources MacPlatform::makeMetricSources()
{
    return {.fans = std::make_unique<MacFanSource>(std::make_unique<SMCUserClient>()),
            .pages = std::make_unique<MacPageCounters>(),
            .ticks = std::make_unique<MacProcessorTicks>()};
}

std::unique_ptr<StatusItem> MacPlatform::makeStatusItem()
{
    auto item = std::make_unique<MacStatusItem>();
    m_statusItem = item.get();
    return item;
}

std::unique_ptr<Windows> MacPlatform::makeWindows(SettingsViewModel &settings,
                                                  UpdaterController &updater,
                                                  DashboardViewModel &dashboard)
{
    auto system = std::make_unique<MacWindowSystem>(
        [this] { return m_statusItem ? m_statusItem->button() : WId(0); });
    return std::make_unique<ApplicationWindows>(*this, std::move(system), settings, updater,
                                                dashboard);
}

QVariantMap MacPlatform::informationDictionary() const
{
    return ::informationDictionary();
}

QString MacPlatform::bundlePath() const
{
    return ::bundlePath();
}

std::shared_ptr<DiskImages> MacPlatform::diskImages()
{
    return std::make_shared<MacDiskImages>();
}

void MacPlatform::giveMemoryBack()
{
    malloc_zone_pressure_relief(nullptr, 0); // of all zones, as much as there is
}
