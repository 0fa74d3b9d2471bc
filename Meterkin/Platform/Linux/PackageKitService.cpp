#include "Platform/Linux/PackageKitService.h"

#include <utility>

namespace {

const QString service = QStringLiteral("org.freedesktop.PackageKit");
const QString busName = QStringLiteral("org.freedesktop.DBus");
const QString busPath = QStringLiteral("/org/freedesktop/DBus");

} // namespace

PackageKitService::PackageKitService(MessageBus &bus, QObject *parent)
    : QObject(parent)
    , m_bus(bus)
{
    connect(&bus, &MessageBus::connected, this, &PackageKitService::follow);
    connect(&bus, &MessageBus::disconnected, this, [this] {
        m_owner.reset();
        setAvailable(false);
    });
    if (bus.connection())
        follow();
}

void PackageKitService::follow()
{
    QDBusConnection connection = *m_bus.connection();
    m_owner = std::make_unique<QDBusServiceWatcher>(service, connection,
                                                    QDBusServiceWatcher::WatchForOwnerChange);
    connect(m_owner.get(), &QDBusServiceWatcher::serviceOwnerChanged, this,
            &PackageKitService::ask);
    // Sent when a package brings or takes away the file that lets the bus start the service.
    connection.connect(QString(), busPath, busName, QStringLiteral("ActivatableServicesChanged"),
                       this, SLOT(ask()));
    ask();
}

void PackageKitService::ask()
{
    const auto list = [this](const QString &method, std::function<void(bool)> done) {
        m_bus.call(QDBusMessage::createMethodCall(busName, busPath, busName, method), m_owner.get(),
                   [done = std::move(done)](const QDBusMessage &reply) {
                       done(reply.arguments().value(0).toStringList().contains(service));
                   });
    };
    if (!m_owner)
        return;
    list(QStringLiteral("ListActivatableNames"), [this, list](bool isActivatable) {
        if (isActivatable)
            setAvailable(true);
        else
            list(QStringLiteral("ListNames"), [this](bool runs) { setAvailable(runs); });
    });
}

void PackageKitService::setAvailable(bool available)
{
    if (std::exchange(m_isAvailable, available) != available)
        emit availableChanged();
}
