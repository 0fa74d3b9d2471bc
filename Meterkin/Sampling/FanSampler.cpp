#include "Sampling/FanSampler.h"

#include "Platform/Log.h"

#include <utility>

FanSampler::FanSampler(std::unique_ptr<FanSource> source, MonotonicClock clock)
    : m_source(std::move(source))
    , m_clock(std::move(clock))
{
}

void FanSampler::refresh()
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_readSince)
            return;
        m_readSince = m_clock();
    }
    FanSample sample = m_source->read();
    const std::lock_guard lock(m_mutex);
    m_latest = std::move(sample);
    m_isSlow = m_clock() - *m_readSince > SlowAfter;
    m_readSince.reset();
}

std::optional<FanSample> FanSampler::latest()
{
    const std::lock_guard lock(m_mutex);
    std::optional<FanSample> sample = m_latest;
    if (m_readSince && m_clock() - *m_readSince > HungAfter) {
        if (!std::exchange(m_isHungReported, true))
            qCWarning(logSampling, "a fan sensor hangs: there are no fan speeds until it answers");
        if (sample)
            sample->fans.clear();
    }
    return sample;
}

bool FanSampler::isSlow() const
{
    const std::lock_guard lock(m_mutex);
    return m_isSlow;
}
