#pragma once

#include "Platform/FanSource.h"
#include "Platform/PageCounters.h"
#include "Platform/ProcessorTicks.h"

#include <memory>

/// What the metrics are read from.
struct MetricSources {
    std::unique_ptr<FanSource> fans;
    std::unique_ptr<PageCounters> pages;
    std::unique_ptr<ProcessorTicks> ticks;
};
