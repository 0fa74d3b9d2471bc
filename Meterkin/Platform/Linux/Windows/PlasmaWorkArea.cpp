#include "Platform/Linux/Windows/PlasmaWorkArea.h"

#include <QDBusMessage>
#include <QScreen>

namespace {

constexpr std::chrono::milliseconds AnswerPatience{300}; // a click waits for it

} // namespace

PlasmaWorkArea::PlasmaWorkArea()
{
    m_patience.setSingleShot(true);
    m_patience.setInterval(AnswerPatience);
    connect(&m_patience, &QTimer::timeout, this, [this] { emit found(QRect()); });
    connect(&m_bus, &BusConnection::connected, this, [this] {
        if (m_patience.isActive())
            send();
    });
}

void PlasmaWorkArea::ask(const QScreen &screen)
{
    m_screen = screen.name();
    m_patience.start();
    if (m_bus.connection())
        send();
}

void PlasmaWorkArea::cancel()
{
    m_patience.stop();
}

void PlasmaWorkArea::send()
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.kde.plasmashell"), QStringLiteral("/StrutManager"),
        QStringLiteral("org.kde.PlasmaShell.StrutManager"), QStringLiteral("availableScreenRect"));
    call.setAutoStartService(false);
    call << m_screen;
    m_bus.call<QRect>(
        call, this,
        [this, screen = m_screen](const BusReply<QRect> &reply) {
            if (screen == m_screen)
                answer(reply.isValid() ? reply.value() : QRect());
        },
        AnswerPatience);
}

void PlasmaWorkArea::answer(const QRect &area)
{
    if (!m_patience.isActive())
        return;
    m_patience.stop();
    emit found(area);
}
