#include "Sampling/ReadingLoop.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::chrono::milliseconds EndTimeout{100};

} // namespace

ReadingLoop::ReadingLoop(MetricSources sources, WallClock clock, std::function<void()> deliver)
    : m_sampler(std::move(sources))
    , m_clock(std::move(clock))
    , m_deliver(std::move(deliver))
{
}

void ReadingLoop::run()
{
    Lock lock(m_mutex);
    ++m_runningCount;
    while (!m_isEnded) {
        if (!sleepUntil(lock, m_times.claim(Clock::now())))
            continue;
        lock.unlock();
        takeReading();
        lock.lock();
    }
    --m_runningCount;
    m_change.notify_all();
}

/// False when something else is due.
bool ReadingLoop::sleepUntil(Lock &lock, Clock::time_point due)
{
    const int startCount = m_startCount;
    while (!m_isEnded && startCount == m_startCount) {
        const Clock::time_point now = Clock::now();
        if (m_openUntil && now >= *m_openUntil)
            close(); // without its fans, which are slow
        if (now >= due)
            return true;
        m_change.wait_until(lock, m_openUntil ? std::min(due, *m_openUntil) : due);
    }
    return false;
}

void ReadingLoop::takeReading()
{
    Lock turn(m_turn);
    Lock lock(m_mutex);
    if (m_isEnded || !m_times.begin(Clock::now()))
        return;
    close(); // the one before, whose fans are slow
    m_matters = std::exchange(m_isAwaited, false);
    lock.unlock();
    m_sampler.read(m_read->sample);
    m_read->time = m_clock();
    lock.lock();
    std::swap(m_open, m_read);
    m_openNumber = ++m_number;
    turn.unlock();
    readFans(lock);
}

/// Completes the open reading.
void ReadingLoop::readFans(Lock &lock)
{
    const int number = m_number;
    const FanSampler::Pace pace = m_sampler.fans().pace();
    if (pace == FanSampler::Pace::Slow) {
        close(); // with the fans as they were last
    } else if (pace == FanSampler::Pace::Open) {
        // Should they be slow now, whoever waits for the rest must not. If nobody does, then the
        // next reading is early enough.
        judge();
        if (m_matters) {
            m_openUntil = Clock::now() + FanSampler::SlowAfter;
            m_change.notify_one();
        }
    }
    lock.unlock();
    m_sampler.fans().refresh();
    lock.lock();
    if (m_openNumber == number)
        close();
}

void ReadingLoop::close()
{
    if (!std::exchange(m_openNumber, std::nullopt))
        return;
    m_openUntil.reset();
    judge();
    m_kept.append(m_open);
    if ((m_matters || m_kept.size() >= MostKept) && m_deliver
        && !std::exchange(m_isDelivered, true))
        m_deliver();
}

/// Adds the fans as they were last, and whether the open reading matters so.
void ReadingLoop::judge()
{
    m_sampler.fans().copyLatest(m_open->sample.fans);
    m_matters = !m_filter || m_filter(*m_open) || m_matters;
}

void ReadingLoop::start(Clock::duration interval)
{
    const Lock lock(m_mutex);
    m_times.restart(Clock::now(), interval);
    m_isAwaited = true;
    ++m_startCount;
    m_change.notify_all();
}

void ReadingLoop::setFilter(Filter filter)
{
    const Lock lock(m_mutex);
    m_filter.swap(filter);
}

void ReadingLoop::take(ReadingBatch &batch)
{
    const Lock lock(m_mutex);
    batch.clear();
    std::swap(m_kept, batch);
    m_isDelivered = false;
}

bool ReadingLoop::end()
{
    Lock lock(m_mutex);
    m_isEnded = true;
    m_deliver = nullptr;
    m_filter = nullptr;
    m_change.notify_all();
    return m_change.wait_for(lock, EndTimeout, [this] { return m_runningCount == 0; });
}
