#include "Platform/Linux/Notifications/Server.h"

#include "Platform/Linux/Display/ActivationToken.h"
#include "Platform/Linux/Notifications/Image.h"
#include "Platform/Log.h"

#include <utility>

namespace {

const QString path = QStringLiteral("/org/freedesktop/Notifications");
const QString application = QStringLiteral("org.meterkin.Meterkin"); // its icon and desktop file
const QString defaultAction = QStringLiteral("default"); // a click on the notification itself

constexpr int ServerChoosesTime = -1;

QVariantMap hints()
{
    constexpr uchar normalUrgency = 1;
    return {{QStringLiteral("desktop-entry"), application},
            // For programs that are not installed: themes do not know their icon's name.
            {QStringLiteral("image-data"), notificationIcon()},
            {QStringLiteral("urgency"), QVariant::fromValue(normalUrgency)},
            // There is no name for a server's default sound; of the standard ones this fits best.
            {QStringLiteral("sound-name"), QStringLiteral("dialog-warning")}};
}

} // namespace

const QString NotificationServer::Service = QStringLiteral("org.freedesktop.Notifications");

NotificationServer::NotificationServer(BusConnection &bus, const QString &owner, QObject *parent)
    : QObject(parent)
    , m_bus(bus)
    , m_owner(owner)
{
    QDBusConnection connection = *bus.connection();
    // From any sender: to name it here would mean to wait for the bus.
    connection.connect(QString(), path, Service, QStringLiteral("ActionInvoked"), this,
                       SLOT(handleAction(QDBusMessage)));
    connection.connect(QString(), path, Service, QStringLiteral("ActivationToken"), this,
                       SLOT(takeActivationToken(QDBusMessage)));
    connection.connect(QString(), path, Service, QStringLiteral("NotificationClosed"), this,
                       SLOT(handleClosed(QDBusMessage)));
}

void NotificationServer::post(const NotificationRecord &record)
{
    m_listings[record.identifier].next = record;
    if (m_capabilities)
        postNext(record.identifier, *m_capabilities);
    else if (!m_isAsking)
        askForCapabilities();
}

void NotificationServer::askForCapabilities()
{
    m_isAsking = true;
    const auto proceed = [this](const BusReply<QStringList> &reply) {
        m_isAsking = false;
        const QStringList names = reply.value();
        if (reply.isValid())
            m_capabilities = {names.contains(u"actions"), names.contains(u"body-markup")};
        // A server that does not tell them gets the plainest form, and a retry at the next post.
        for (const auto &[identifier, listing] : m_listings)
            postNext(identifier, m_capabilities.value_or(Capabilities()));
    };
    m_bus.call<QStringList>(methodCall(QStringLiteral("GetCapabilities")), this, proceed);
}

void NotificationServer::postNext(const QString &identifier, const Capabilities &capabilities)
{
    Listing &listing = m_listings[identifier];
    if (listing.isPosting || !listing.next)
        return;
    const NotificationRecord record = *std::exchange(listing.next, std::nullopt);
    listing.isPosting = true;

    QStringList actions;
    if (capabilities.takesActions)
        actions << defaultAction << tr("Open");
    const QString body = capabilities.takesMarkup ? record.body.toHtmlEscaped() : record.body;
    QDBusMessage notify = methodCall(QStringLiteral("Notify"));
    notify << QStringLiteral("Meterkin") << listing.number << application << record.title << body
           << actions << hints() << ServerChoosesTime;
    m_bus.call<uint>(notify, this, [this, identifier, capabilities](const BusReply<uint> &reply) {
        Listing &answered = m_listings[identifier];
        answered.isPosting = false;
        if (reply.isValid())
            answered.number = reply.value();
        else if (!std::exchange(m_hasWarned, true))
            qCWarning(logBus,
                      "The notification server has not taken an alert (%s): it may not be shown",
                      qUtf8Printable(reply.error().name()));
        postNext(identifier, capabilities);
    });
}

void NotificationServer::handleAction(const QDBusMessage &message)
{
    if (message.service() != m_owner || message.signature() != u"us")
        return;
    const std::optional<QString> identifier = listed(message.arguments()[0].toUInt());
    if (identifier && message.arguments()[1] == defaultAction)
        emit clicked(*identifier);
}

/// Comes before the action.
void NotificationServer::takeActivationToken(const QDBusMessage &message)
{
    if (message.service() == m_owner && message.signature() == u"us"
        && listed(message.arguments()[0].toUInt()))
        acceptActivationToken(message.arguments()[1].toString());
}

/// The identifier of our notification with that number.
std::optional<QString> NotificationServer::listed(uint number) const
{
    for (const auto &[identifier, listing] : m_listings) {
        if (number != 0 && listing.number == number)
            return identifier;
    }
    return std::nullopt;
}

void NotificationServer::handleClosed(const QDBusMessage &message)
{
    if (message.service() != m_owner || message.signature() != u"uu")
        return;
    const uint number = message.arguments()[0].toUInt();
    for (auto &[identifier, listing] : m_listings) {
        if (listing.number == number)
            listing.number = 0;
    }
}

QDBusMessage NotificationServer::methodCall(const QString &method) const
{
    return QDBusMessage::createMethodCall(m_owner, path, Service, method);
}
