#include "Platform/Linux/Tray/MissingPanelNotice.h"

#include "Platform/Log.h"

#include <QCoreApplication>

namespace {

constexpr std::chrono::seconds NoticeDelay{60};

} // namespace

MissingPanelNotice::MissingPanelNotice(NotificationCentre &notifications)
{
    m_delay.setSingleShot(true);
    m_delay.setTimerType(Qt::VeryCoarseTimer);
    m_delay.setInterval(NoticeDelay);
    QObject::connect(&m_delay, &QTimer::timeout, &m_delay, [this, &notifications] {
        m_isTold = true;
        qCWarning(logTray,
                  "No panel takes the item, and the compositor no window at a place of "
                  "its own: the readings are only in the dashboard");
        notifications.post(
            {QStringLiteral("org.meterkin.Meterkin.panel"),
             QCoreApplication::translate("MissingPanelNotice", "No panel shows the readings"),
             QCoreApplication::translate(
                 "MissingPanelNotice",
                 "This desktop needs a tray for it. For GNOME, install the extension "
                 "“AppIndicator and KStatusNotifierItem Support”.")});
    });
}

void MissingPanelNotice::start()
{
    if (!m_isTold && !m_delay.isActive())
        m_delay.start();
}
