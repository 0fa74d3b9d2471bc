#include "Platform/Linux/Updates/RestartOffer.h"

#include "Platform/Log.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace {

const QString restartIdentifier = QStringLiteral("org.meterkin.Meterkin.restart");

} // namespace

RestartOffer::RestartOffer(NotificationCentre &notifications, QObject *parent)
    : QObject(parent)
    , m_notifications(notifications)
{
    connect(&notifications, &NotificationCentre::clicked, this, [this](const QString &identifier) {
        if (identifier == restartIdentifier && !m_offered.isEmpty())
            accept(m_offered);
    });
}

void RestartOffer::post(const QString &program)
{
    qCDebug(logUpdates) << "a restart is offered, as" << program;
    m_offered = program;
    m_notifications.post({restartIdentifier, tr("Meterkin was updated"),
                          tr("Choose this notification to restart it.")});
}

void RestartOffer::accept(const QString &program)
{
    const QFileInfo file(program);
    if (!file.isFile() || !file.isExecutable()) {
        qCWarning(logUpdates, "%s cannot be started: the running version stays",
                  qUtf8Printable(program));
        return;
    }
    m_accepted = program;
    QCoreApplication::quit();
}
