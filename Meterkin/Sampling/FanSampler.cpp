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
    m_source->read(m_reading);
    const std::lock_guard lock(m_mutex);
    if (!m_latest)
        m_latest.emplace();
    std::swap(*m_latest, m_reading);
    m_isSlow = m_clock() - *m_readSince > SlowAfter;
    m_readSince.reset();
}

void FanSampler::copyLatest(std::optional<FanSample> &sample)
{
    const std::lock_guard lock(m_mutex);
    if (!m_latest) {
        sample.reset();
        return;
    }
    if (!sample)
        sample.emplace();
    sample->count = m_latest->count;
    sample->fans.clear();
    if (m_readSince && m_clock() - *m_readSince > HungAfter) {
        if (!std::exchange(m_isHungReported, true))
            qCWarning(logSampling, "a fan sensor hangs: there are no fan speeds until it answers");
        return;
    }
    for (const FanReading &fan : std::as_const(m_latest->fans))
        sample->fans.append(fan); // not the list itself, which the next read would have to copy
}

FanSampler::Pace FanSampler::pace() const
{
    const std::lock_guard lock(m_mutex);
    if (m_isSlow || m_readSince)
        return Pace::Slow;
    return m_latest && m_latest->count == 0 ? Pace::Quick : Pace::Open;
}
