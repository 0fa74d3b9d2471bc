#include "Platform/Linux/Hotkey/PortalRegistrar.h"

#include "Platform/Linux/Hotkey/CombinationText.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>

#include <utility>

namespace {

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString registryInterface = QStringLiteral("org.freedesktop.host.portal.Registry");
const QString shortcutsInterface = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");
const QString requestInterface = QStringLiteral("org.freedesktop.portal.Request");
const QString sessionInterface = QStringLiteral("org.freedesktop.portal.Session");
const QString applicationIdentifier = QStringLiteral("org.meterkin.Meterkin");

// Fixed, since a connection of our own never has two of a kind: some desktops know a program
// outside of a sandbox again by its session's token, and ask the user anew for another one.
const QString sessionToken = QStringLiteral("meterkin");
const QString createToken = QStringLiteral("meterkin_session");
const QString bindToken = QStringLiteral("meterkin_bind");

/// A portal that our call starts first waits for services of its desktop; nobody waits for us.
constexpr std::chrono::minutes CallTimeout{1};

/// Until the user is told that there is no portal.
constexpr int NoPortalMilliseconds = 3'000;

constexpr std::uint32_t LastOfLatin = 0xff; // a keysym

/// Desktops remember a shortcut by this name, with its keys: under a name that stays, a combination
/// that the user has recorded anew would never be proposed.
QString shortcutName(const HotkeyCombination &combination)
{
    return QStringLiteral("toggle-dashboard-%1-%2")
        .arg(combination.keyCode)
        .arg(combination.modifiers);
}

/// A shortcut on the bus, `(sa{sv})`.
struct PortalShortcut {
    QString id;
    QVariantMap properties;
};

QDBusArgument &operator<<(QDBusArgument &argument, const PortalShortcut &shortcut)
{
    argument.beginStructure();
    argument << shortcut.id << shortcut.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, PortalShortcut &shortcut)
{
    argument.beginStructure();
    argument >> shortcut.id >> shortcut.properties;
    argument.endStructure();
    return argument;
}

QDBusMessage portalCall(const QString &interface, const QString &method)
{
    return QDBusMessage::createMethodCall(service, portalPath, interface, method);
}

} // namespace

PortalRegistrar::PortalRegistrar(FindKeysym findKeysym, QObject *parent)
    : QObject(parent)
    , m_findKeysym(std::move(findKeysym))
{
    m_start.setSingleShot(true);
    connect(&m_start, &QTimer::timeout, this, &PortalRegistrar::openBus);
    m_noPortal.setSingleShot(true);
    m_noPortal.setInterval(NoPortalMilliseconds);
    connect(&m_noPortal, &QTimer::timeout, this, [this] { giveUp(HotkeyObstacle::NoService); });
}

void PortalRegistrar::bind(const HotkeyCombination &combination, const HotkeyIdentifier &,
                           std::function<void()> pressed)
{
    unbind();
    m_combination = combination;
    m_pressed = std::move(pressed);
    // Once for a burst of changes: key and modifiers are stored one after the other, and the user
    // must not be asked about the halves.
    m_start.start(0);
}

void PortalRegistrar::unbind()
{
    m_start.stop();
    closeBus();
    m_pressed = nullptr;
    setObstacle(HotkeyObstacle::None);
}

void PortalRegistrar::openBus()
{
    closeBus();
    // A connection of its own, since the introduction must be the first that a portal hears on it.
    m_bus = std::make_unique<BusConnection>();
    connect(m_bus.get(), &BusConnection::connected, this, &PortalRegistrar::connectSignals);
    m_service = std::make_unique<BusName>(*m_bus, service);
    connect(m_service.get(), &BusName::changed, this, &PortalRegistrar::handleOwner);
    m_noPortal.start();
}

/// With the connection all that the portal holds for it ends: the session, a request whose answer
/// is still to come, a dialog.
void PortalRegistrar::closeBus()
{
    m_service.reset();
    forgetPortal();
    m_noPortal.stop();
    m_bus.reset();
}

void PortalRegistrar::forgetPortal()
{
    m_talk.reset();
    m_step = Step::Idle;
    m_portal.clear();
}

void PortalRegistrar::connectSignals()
{
    QDBusConnection connection = *m_bus->connection();
    // From any sender: to name the sender here would mean to wait for the bus.
    const QString response = QStringLiteral("Response");
    connection.connect(QString(), handle(createToken), requestInterface, response, this,
                       SLOT(takeSessionResponse(QDBusMessage)));
    connection.connect(QString(), handle(bindToken), requestInterface, response, this,
                       SLOT(takeBindResponse(QDBusMessage)));
    connection.connect(QString(), portalPath, shortcutsInterface, QStringLiteral("Activated"), this,
                       SLOT(handleActivation(QDBusMessage)));
    connection.connect(QString(), handle(sessionToken), sessionInterface, QStringLiteral("Closed"),
                       this, SLOT(handleClosedSession(QDBusMessage)));
}

void PortalRegistrar::handleOwner(const std::optional<QString> &previous)
{
    const std::optional<QString> &owner = m_service->owner();
    if (!owner) { // the bus is lost
        forgetPortal();
        m_noPortal.start();
        return;
    }
    if (!previous) { // the bus is there; our call starts a portal that does not run
        introduce();
        return;
    }
    if (*owner == m_portal)
        return; // it was our call that started it
    m_talk.reset();
    m_step = Step::Idle;
    if (owner->isEmpty()) {
        m_noPortal.start();
        return;
    }
    if (m_portal.isEmpty())
        introduce();
    else // The desktop's part of the portal, which may have stayed, still holds the session's path.
        m_start.start(0);
}

/// Says which program this connection belongs to. The answer, also that there is no such thing
/// here, tells who the portal is.
void PortalRegistrar::introduce()
{
    m_talk = std::make_unique<QObject>();
    QDBusMessage call = portalCall(registryInterface, QStringLiteral("Register"));
    call << applicationIdentifier << QVariantMap();
    const auto proceed = [this](const BusReply<void> &reply) {
        if (reply.isTimeout())
            return introduce();
        if (!reply.sender().startsWith(u':')) // the bus has answered in place of a portal
            return giveUp(HotkeyObstacle::NoService);
        m_portal = reply.sender();
        createSession();
    };
    m_bus->call<void>(call, m_talk.get(), proceed, CallTimeout);
}

void PortalRegistrar::createSession()
{
    m_noPortal.stop();
    setObstacle(HotkeyObstacle::None); // as long as it is asked
    m_step = Step::CreatingSession;
    QDBusMessage message = portalCall(shortcutsInterface, QStringLiteral("CreateSession"));
    message << QVariantMap{{QStringLiteral("handle_token"), createToken},
                           {QStringLiteral("session_handle_token"), sessionToken}};
    call(message, HotkeyObstacle::NoService);
}

void PortalRegistrar::bindShortcut()
{
    m_step = Step::Binding;
    qDBusRegisterMetaType<PortalShortcut>();
    qDBusRegisterMetaType<QList<PortalShortcut>>();
    PortalShortcut shortcut{
        shortcutName(m_combination),
        {{QStringLiteral("description"), QStringLiteral("Open the meterkin dashboard")}}};
    // Without one the user can still choose.
    if (const QString keys = trigger(); !keys.isEmpty())
        shortcut.properties.insert(QStringLiteral("preferred_trigger"), keys);
    QDBusMessage message = portalCall(shortcutsInterface, QStringLiteral("BindShortcuts"));
    message << QDBusObjectPath(handle(sessionToken))
            << QVariant::fromValue(QList<PortalShortcut>{shortcut}) << QString()
            << QVariantMap{{QStringLiteral("handle_token"), bindToken}};
    call(message, HotkeyObstacle::Refused);
}

/// Desktops take triggers by symbols, and know those of other scripts by the American layout.
QString PortalRegistrar::trigger() const
{
    const std::uint32_t present = m_findKeysym(m_combination.keyCode);
    return shortcutTrigger(m_combination,
                           present <= LastOfLatin ? present : ansiKeysym(m_combination.keyCode));
}

void PortalRegistrar::giveUp(HotkeyObstacle obstacle)
{
    m_noPortal.stop();
    m_step = Step::Idle;
    setObstacle(obstacle);
}

/// The true answer is the response that follows; only an error comes at once.
void PortalRegistrar::call(const QDBusMessage &call, HotkeyObstacle onError)
{
    const auto takeReply = [this, onError](const BusReply<void> &reply) {
        if (!reply.isValid())
            giveUp(onError);
    };
    m_bus->call<void>(call, m_talk.get(), takeReply, CallTimeout);
}

bool PortalRegistrar::isAnswer(const QDBusMessage &response, Step step) const
{
    return m_step == step && response.service() == m_portal;
}

void PortalRegistrar::takeSessionResponse(const QDBusMessage &response)
{
    if (!isAnswer(response, Step::CreatingSession))
        return;
    if (response.arguments().value(0) == QVariant(0U))
        bindShortcut();
    else
        giveUp(HotkeyObstacle::Refused);
}

void PortalRegistrar::takeBindResponse(const QDBusMessage &response)
{
    if (!isAnswer(response, Step::Binding))
        return;
    // Even when the shortcut is missing in the answer: some desktops always leave it out, and on
    // others the user can give it keys later.
    if (response.arguments().value(0) == QVariant(0U))
        m_step = Step::Bound;
    else
        giveUp(HotkeyObstacle::Refused);
}

void PortalRegistrar::handleActivation(const QDBusMessage &activation)
{
    const QVariantList arguments = activation.arguments();
    const QString session = arguments.value(0).value<QDBusObjectPath>().path();
    if (!isAnswer(activation, Step::Bound) || !m_pressed || session != handle(sessionToken)
        || arguments.value(1).toString() != shortcutName(m_combination))
        return;
    const auto pressed = m_pressed; // may be replaced while it runs
    pressed();
}

void PortalRegistrar::handleClosedSession(const QDBusMessage &closing)
{
    if (closing.service() == m_portal)
        giveUp(HotkeyObstacle::Refused);
}

/// Where the portal puts the request or the session that bears this token.
QString PortalRegistrar::handle(const QString &token) const
{
    const QString folder =
        token == sessionToken ? QStringLiteral("/session/") : QStringLiteral("/request/");
    const QString sender = m_bus->connection()->baseService().mid(1).replace(u'.', u'_');
    return portalPath + folder + sender + u'/' + token;
}
