#include "Platform/Linux/Updates/PackageKitTransaction.h"

#include <QDBusArgument>
#include <QLocale>

#include <utility>

namespace {

const QString service = QStringLiteral("org.freedesktop.PackageKit");
const QString servicePath = QStringLiteral("/org/freedesktop/PackageKit");
const QString interface = QStringLiteral("org.freedesktop.PackageKit.Transaction");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

// PkExitEnum of the reference manual.
enum Exit : uint {
    Success = 1,
    Cancelled = 3,
    KeyRequired = 4,
    EulaRequired = 5,
    NeedUntrusted = 8,
    CancelledPriority = 9,
    RepairRequired = 11,
};

/// The error of an exit that has no error code.
PackageKitError errorOf(uint exit)
{
    switch (exit) {
    case KeyRequired:
    case NeedUntrusted:
        return PackageKitError::MissingSignature;
    case EulaRequired:
        return PackageKitError::NoLicenceAgreement;
    case CancelledPriority:
        return PackageKitError::CancelledPriority;
    case RepairRequired:
        return PackageKitError::UnfinishedTransaction;
    default:
        return PackageKitError::Unknown;
    }
}

constexpr uint CancelledError = 17; // PK_ERROR_ENUM_TRANSACTION_CANCELLED

QStringList hints(PackageKitTransaction::Manner manner)
{
    using Manner = PackageKitTransaction::Manner;
    const auto truth = [](bool value) {
        return value ? QStringLiteral("true") : QStringLiteral("false");
    };
    return {QStringLiteral("background=") + truth(manner == Manner::Background),
            QStringLiteral("interactive=") + truth(manner == Manner::Authorizing),
            QStringLiteral("locale=%1.UTF-8").arg(QLocale::system().name())};
}

} // namespace

PackageKitTransaction::PackageKitTransaction(BusConnection &bus, std::chrono::milliseconds timeout,
                                             QObject *parent)
    : QObject(parent)
    , m_bus(bus)
    , m_timeout(timeout)
    , m_service(bus, service)
{
    m_silence.setSingleShot(true);
    m_silence.setInterval(timeout);
    connect(&m_silence, &QTimer::timeout, this, &PackageKitTransaction::checkAlive);
    connect(&m_service, &BusName::changed, this, [this] {
        const std::optional<QString> &owner = m_service.owner();
        const bool isBusLost = !owner;
        if (isBusLost || (!m_owner.isEmpty() && *owner != m_owner))
            finish({PackageKitResult::Ending::Failed, PackageKitError::ServiceEnded, QString()});
    });
}

void PackageKitTransaction::start(Manner manner, const QString &method,
                                  const QVariantList &arguments)
{
    QDBusMessage work = QDBusMessage::createMethodCall(service, servicePath, interface, method);
    work.setArguments(arguments);
    // This call starts the service when it does not run, which may take long.
    m_bus.call<QDBusObjectPath>(
        QDBusMessage::createMethodCall(service, servicePath, service,
                                       QStringLiteral("CreateTransaction")),
        this,
        [this, manner, work](const BusReply<QDBusObjectPath> &reply) {
            begin(reply, manner, work);
        },
        2 * m_timeout);
}

void PackageKitTransaction::begin(const BusReply<QDBusObjectPath> &created, Manner manner,
                                  const QDBusMessage &work)
{
    if (m_hasEnded)
        return;
    if (!created.isValid() || !m_bus.connection()) {
        fail(created.error());
        return;
    }
    m_path = created.value().path();
    m_owner = created.sender();

    QDBusConnection connection = *m_bus.connection();
    // From any sender, because connect() with the name of one blocks for the bus.
    connection.connect(QString(), m_path, interface, QString(), this,
                       SLOT(handleSignal(QDBusMessage)));
    connection.connect(QString(), m_path, propertiesInterface, QStringLiteral("PropertiesChanged"),
                       this, SLOT(handleProperties(QDBusMessage)));

    QDBusMessage hinting = methodCall(interface, QStringLiteral("SetHints"));
    hinting << hints(manner);
    m_bus.call(hinting); // only hints

    QDBusMessage working = methodCall(interface, work.member());
    working.setArguments(work.arguments());
    m_silence.start();
    m_bus.call<void>(
        working, this,
        [this](const BusReply<void> &reply) {
            // A late reply is no failure: checkAlive() finds out whether the service hangs.
            if (!reply.isValid() && !reply.isTimeout())
                fail(reply.error());
        },
        2 * m_timeout);
}

void PackageKitTransaction::cancel()
{
    if (!m_path.isEmpty() && !m_hasEnded)
        m_bus.call(methodCall(interface, QStringLiteral("Cancel"))); // a refusal changes nothing
}

QDBusMessage PackageKitTransaction::methodCall(const QString &methodInterface,
                                               const QString &method) const
{
    return QDBusMessage::createMethodCall(m_owner, m_path, methodInterface, method);
}

void PackageKitTransaction::handleSignal(const QDBusMessage &message)
{
    if (m_hasEnded || message.service() != m_owner)
        return;
    m_silence.start();
    const QString name = message.member();
    const QString signature = message.signature();
    const QVariantList arguments = message.arguments();
    if (name == u"Package" && signature == u"uss") {
        if (const auto package = PackageIdentifier::parse(arguments[1].toString()))
            // Newer versions use the upper 16 bits for something else.
            emit packageListed(static_cast<PackageInfo>(arguments[0].toUInt() & 0xFFFF), *package);
    } else if (name == u"UpdateDetail" && signature == u"sasasasasasussuss") {
        const QString text = arguments[7].toString();
        const QString changes = arguments[8].toString();
        // A single line only says that there is no changelog.
        emit notesListed(text.isEmpty() && changes.contains(u'\n') ? changes : text);
    } else if (name == u"ErrorCode" && signature == u"us") {
        const uint code = arguments[0].toUInt();
        m_result = {code == CancelledError ? PackageKitResult::Ending::Cancelled
                                           : PackageKitResult::Ending::Failed,
                    static_cast<PackageKitError>(code), arguments[1].toString()};
    } else if (name == u"Finished" && signature == u"uu") {
        const uint exit = arguments[0].toUInt();
        if (exit == Success)
            m_result.ending = PackageKitResult::Ending::Success;
        else if (exit == Cancelled)
            m_result.ending = PackageKitResult::Ending::Cancelled;
        else if (m_result.error == PackageKitError::Unknown)
            m_result.error = errorOf(exit);
        finish(m_result);
    } else if (name == u"Destroy") {
        finish(m_result);
    }
}

void PackageKitTransaction::handleProperties(const QDBusMessage &message)
{
    if (m_hasEnded || message.service() != m_owner || message.signature() != u"sa{sv}as")
        return;
    m_silence.start();
    takeProperties(qdbus_cast<QVariantMap>(message.arguments()[1]));
}

void PackageKitTransaction::checkAlive()
{
    QDBusMessage query = methodCall(propertiesInterface, QStringLiteral("GetAll"));
    query << interface;
    m_bus.call<QVariantMap>(
        query, this,
        [this](const BusReply<QVariantMap> &reply) {
            if (m_hasEnded)
                return;
            if (!reply.isValid()) {
                finish(
                    {PackageKitResult::Ending::Failed, PackageKitError::ServiceSilent, QString()});
                return;
            }
            m_silence.start();
            takeProperties(reply.value());
        },
        m_timeout);
}

void PackageKitTransaction::takeProperties(const QVariantMap &properties)
{
    if (const QVariant percentage = properties.value(QStringLiteral("Percentage"));
        percentage.isValid()) {
        // 101 means unknown, and some package managers say 100 long before the end.
        const uint percent = percentage.toUInt();
        emit progressed(percent < 100 ? static_cast<int>(percent) : -1);
    }
    if (const QVariant allowed = properties.value(QStringLiteral("AllowCancel"));
        allowed.isValid() && std::exchange(m_isCancellable, allowed.toBool()) != allowed.toBool())
        emit cancellableChanged(m_isCancellable);
}

void PackageKitTransaction::fail(const QDBusError &error)
{
    PackageKitError kind = PackageKitError::Unknown;
    if (error.name().contains(u"NotAuthorized") || error.name().contains(u"RefusedByPolicy")
        || error.type() == QDBusError::AccessDenied)
        kind = PackageKitError::NotAuthorized;
    else if (error.type() == QDBusError::NoReply || error.type() == QDBusError::ServiceUnknown
             || error.type() == QDBusError::Disconnected)
        kind = PackageKitError::ServiceSilent;
    finish({PackageKitResult::Ending::Failed, kind, error.message()});
}

void PackageKitTransaction::finish(const PackageKitResult &result)
{
    if (std::exchange(m_hasEnded, true))
        return;
    m_silence.stop();
    // A copy, because m_result may change before the last receiver has seen it.
    emit finished(PackageKitResult(result));
}
