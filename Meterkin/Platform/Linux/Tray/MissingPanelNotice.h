#pragma once

#include "Platform/NotificationCentre.h"

#include <QTimer>

/// Tells the user, once a run, that nothing on this desktop shows the item, and what would. Main
/// thread only.
class MissingPanelNotice {
public:
    /// The notifications outlive it.
    explicit MissingPanelNotice(NotificationCentre &notifications);

    /// The item has no place. It is told when that lasts: panels may start after the program.
    void start();
    void stop() { m_delay.stop(); }

private:
    QTimer m_delay;
    bool m_isTold = false;
};
