#pragma once

#include <QPoint>
#include <QRect>

#include <optional>

/// Keeps a click on the status item from opening the popover that its own press has closed. The
/// press lands outside of the popover, which closes it; the click that follows then asks to show
/// it. Times are milliseconds of any steady clock.
class ReopenGuard {
public:
    /// How long after the release a panel or menu bar may take to report the click.
    explicit ReopenGuard(qint64 reportMilliseconds = 400)
        : m_reportMilliseconds(reportMilliseconds)
    {
    }

    /// A press has closed the popover. `place` is in logical coordinates; absent where the system
    /// does not report it.
    void closedByPress(std::optional<QPoint> place, qint64 now);
    /// The button has been released.
    void released(qint64 now);
    /// Whether a click on that item belongs to the press that has closed the popover; true at most
    /// once for each press. An empty `item` is one whose place is not known.
    bool swallows(const QRect &item, qint64 now);

private:
    struct Press {
        std::optional<QPoint> place;
        qint64 pressedAt;
        std::optional<qint64> releasedAt; ///< absent until it is reported
    };
    qint64 m_reportMilliseconds;
    std::optional<Press> m_press;
};
