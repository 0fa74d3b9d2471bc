#pragma once

#include <QPoint>
#include <QRect>

#include <optional>

/// Tells a click on the status item that closed the popover from one that wants it opened: the
/// press closes it, and the click of that same press arrives as a wish to show it. Times are
/// milliseconds of any steady clock.
class ReopenGuard {
public:
    /// How long after the release a panel or menu bar may take to report the click.
    explicit ReopenGuard(qint64 reportMilliseconds = 400)
        : m_reportMilliseconds(reportMilliseconds)
    {
    }

    /// A press has closed the popover. `place` is absent where the system does not tell it.
    void closedByPress(std::optional<QPoint> place, qint64 now);
    /// A button has come up again.
    void released(qint64 now);
    /// Whether showing at that item is the rest of the click that closed; true at most once for
    /// each press.
    bool swallows(const QRect &item, qint64 now);

private:
    struct Press {
        std::optional<QPoint> place;
        qint64 pressedAt;
        std::optional<qint64> releasedAt; ///< absent until it is seen
    };
    qint64 m_reportMilliseconds;
    std::optional<Press> m_press;
};
