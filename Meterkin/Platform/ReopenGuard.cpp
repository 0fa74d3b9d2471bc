#include "Platform/ReopenGuard.h"

#include <utility>

namespace {

constexpr qint64 PressMilliseconds = 2000; // for a release that is not reported
constexpr int Tolerance = 8; // logical pixels: some panels report a point beside the press

} // namespace

void ReopenGuard::closedByPress(std::optional<QPoint> place, qint64 now)
{
    // A system that does not report the place does not report the release either.
    m_press = Press{place, now, place ? std::nullopt : std::optional(now)};
}

void ReopenGuard::released(qint64 now)
{
    if (m_press && !m_press->releasedAt)
        m_press->releasedAt = now;
}

bool ReopenGuard::swallows(const QRect &item, qint64 now)
{
    const std::optional<Press> press = std::exchange(m_press, std::nullopt);
    if (!press
        || now > press->releasedAt.value_or(press->pressedAt + PressMilliseconds)
                + m_reportMilliseconds)
        return false;
    return item.isEmpty() || !press->place
        || item.adjusted(-Tolerance, -Tolerance, Tolerance, Tolerance).contains(*press->place);
}
