#include "Model/VisibleChanges.h"

#include "Model/MetricTraits.h"
#include "Sampling/ReadingBatch.h"

#include <utility>

void VisibleChanges::follow(const VisibleValues &values)
{
    const std::lock_guard lock(m_mutex);
    // Whoever stops looking at everything has seen it.
    m_values.areAll = values.areAll;
    m_isNew = m_isNew || m_values != values;
    m_values = values;
}

bool VisibleChanges::areIn(const Reading &reading)
{
    const std::lock_guard lock(m_mutex);
    const MetricSample &sample = reading.sample;
    const std::optional<double> value = valueIn(sample, m_values.title);
    const Title title{shownNumber(value), titleTier(value, m_values.thresholds[m_values.title])};
    const std::optional<Fans> fans = sample.fans
        ? std::optional(Fans{sample.fans->count, sample.fans->fans.size()})
        : std::nullopt;
    // All of them, for what follows is compared with this reading.
    const bool isTitleNew = std::exchange(m_title, title) != title;
    const bool areFansNew = std::exchange(m_fans, fans) != fans;
    const bool isLimitNew = isLimitReached(reading);
    const bool isToolTipNew = hasToolTipChanged(reading);
    return std::exchange(m_isNew, false) || m_values.areAll || isTitleNew || areFansNew
        || isLimitNew || isToolTipNew;
}

/// Whether a metric rises to where its alert begins.
bool VisibleChanges::isLimitReached(const Reading &reading)
{
    bool isReached = false;
    for (const SystemMetric metric : allMetrics) {
        const std::optional<double> value =
            m_values.isAlertOn[metric] ? valueIn(reading.sample, metric) : std::nullopt;
        if (!value)
            continue; // as for the alert itself
        const bool isAbove = *value >= m_values.thresholds[metric].yellow;
        const bool wasAbove = std::exchange(m_isAbove[metric], isAbove);
        isReached = isReached || (isAbove && !wasAbove);
    }
    return isReached;
}

bool VisibleChanges::hasToolTipChanged(const Reading &reading)
{
    // A clock that was set back must not silence it.
    if (!m_values.toolTipPeriod
        || (reading.time >= m_toolTip.time
            && reading.time - m_toolTip.time < *m_values.toolTipPeriod))
        return false;
    ToolTip toolTip{{}, reading.time};
    for (const SystemMetric metric : allMetrics)
        toolTip.numbers[metric] = shownNumber(valueIn(reading.sample, metric));
    if (toolTip.numbers == m_toolTip.numbers)
        return false;
    m_toolTip = toolTip;
    return true;
}
