#include "Platform/macOS/MacPlatform.h"

#include "Platform/macOS/HdiutilDiskImages.h"
#include "Platform/macOS/MachPageCounters.h"
#include "Platform/macOS/MachProcessorTicks.h"
#include "Platform/macOS/MainBundle.h"
#include "Platform/macOS/SMCUserClient.h"
#include "Platform/macOS/Sensors/FanSource.h"

#include <malloc/malloc.h>

MacPlatform::MacPlatform()
    : m_popover([this] { return m_statusItem ? m_statusItem->button() : WId(0); })
{
}

std::unique_ptr<FanSource> MacPlatform::makeFanSource()
{
    return std::make_unique<MacFanSource>(std::make_unique<SMCUserClient>());
}

std::unique_ptr<PageCounters> MacPlatform::makePageCounters()
{
    return std::make_unique<MachPageCounters>();
}

std::unique_ptr<ProcessorTicks> MacPlatform::makeProcessorTicks()
{
    return std::make_unique<MachProcessorTicks>();
}

std::unique_ptr<StatusItem> MacPlatform::makeStatusItem()
{
    auto item = std::make_unique<AppKitStatusItem>();
    m_statusItem = item.get();
    return item;
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
    return std::make_shared<HdiutilDiskImages>();
}

void MacPlatform::giveMemoryBack()
{
    malloc_zone_pressure_relief(nullptr, 0); // of all zones, as much as there is
}
