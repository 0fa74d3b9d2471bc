#include "Platform/Linux/Bus/Name.h"

#include <utility>

BusName::BusName(BusConnection &bus, QString name, QObject *parent)
    : QObject(parent)
    , m_bus(bus)
    , m_name(std::move(name))
    , m_question(bus, [this](const QDBusMessage &reply) {
        // A bus that hangs for a while would not tell by itself later, either.
        if (BusConnection::isTimeout(reply))
            return false;
        const bool isReply = reply.type() == QDBusMessage::ReplyMessage;
        setOwner(isReply ? reply.arguments().value(0).toString() : QString());
        return true;
    })
{
    connect(&bus, &BusConnection::connected, this, &BusName::follow);
    connect(&bus, &BusConnection::disconnected, this, [this] {
        m_watcher.reset();
        setOwner(std::nullopt);
    });
    if (bus.connection())
        follow();
}

void BusName::follow()
{
    m_watcher = std::make_unique<QDBusServiceWatcher>(m_name, *m_bus.connection(),
                                                      QDBusServiceWatcher::WatchForOwnerChange);
    connect(m_watcher.get(), &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &owner) {
                m_question.cancel();
                setOwner(owner);
            });
    // Unlike calling the name, this does not make the bus start a service.
    m_question.ask(BusConnection::busCall(QStringLiteral("GetNameOwner")) << m_name);
}

void BusName::setOwner(const std::optional<QString> &owner)
{
    m_owner = owner;
    emit changed();
}
