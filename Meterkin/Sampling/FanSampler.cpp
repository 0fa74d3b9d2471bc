#include "Sampling/FanSampler.h"

#include <string>
#include <utility>

FanSampler::FanSampler(std::unique_ptr<FanControllerConnection> connection, MonotonicClock clock)
    : m_smcReader(std::move(connection))
    , m_clock(std::move(clock))
{
}

void FanSampler::refresh()
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_askedAt)
            return;
        m_askedAt = m_clock();
    }
    FanSample sample = read();
    const std::lock_guard lock(m_mutex);
    m_latest = std::move(sample);
    m_isSlow = m_clock() - *m_askedAt > Patience;
    m_askedAt.reset();
}

std::optional<FanSample> FanSampler::latest() const
{
    const std::lock_guard lock(m_mutex);
    std::optional<FanSample> sample = m_latest;
    if (sample && m_askedAt && m_clock() - *m_askedAt > Lifetime)
        sample->fans.clear();
    return sample;
}

bool FanSampler::isSlow() const
{
    const std::lock_guard lock(m_mutex);
    return m_isSlow;
}

FanSample FanSampler::read()
{
    FanSample sample;
    if (const std::optional<RawKey> count = m_smcReader.readRaw("FNum"))
        sample.count = count->bytes[0];
    for (qint64 i = 0; i < sample.count; ++i) {
        const std::string fan = std::string("F").append(std::to_string(i));
        const std::optional<double> rpm = m_smcReader.readValue(fan + "Ac");
        if (!rpm)
            continue;
        const std::optional<double> minimum = m_smcReader.readValue(fan + "Mn");
        m_smcReader.loggedFanType = true; // two keys of one fan tell enough about the controller
        const std::optional<double> maximum = m_smcReader.readValue(fan + "Mx");
        sample.fans.append({i, *rpm, minimum, maximum});
    }
    return sample;
}
