#include "Platform/Linux/Hotkey/PortalRegistrar.h"

#include "Platform/Linux/Bus/DesktopPortal.h"
#include "Platform/Linux/Display/ActivationToken.h"
#include "Platform/Linux/Hotkey/CombinationText.h"
#include "Platform/Linux/Hotkey/PortalShortcut.h"
#include "Platform/Log.h"

#include <QDBusObjectPath>

#include <utility>

namespace {

const QString registryInterface = QStringLiteral("org.freedesktop.host.portal.Registry");
const QString shortcutsInterface = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");
const QString requestInterface = QStringLiteral("org.freedesktop.portal.Request");
const QString sessionInterface = QStringLiteral("org.freedesktop.portal.Session");
const QString applicationIdentifier = QStringLiteral("org.meterkin.Meterkin");

// Always the same: some desktops recognise a program by its session's token, and ask the user again
// when that changes.
const QString sessionToken = QStringLiteral("meterkin");
const QString createToken = QStringLiteral("meterkin_session");
const QString bindToken = QStringLiteral("meterkin_bind");

// The call may start the portal, which waits for other services of the desktop.
constexpr std::chrono::minutes CallTimeout{1};

// Until the settings say that there is no portal.
constexpr int NoPortalMilliseconds = 3'000;

constexpr std::uint32_t LastOfLatin = 0xff; // a keysym

/// Desktops remember the keys of a shortcut by its name. Another combination needs another name, or
/// it would never be proposed to the user.
QString shortcutName(const HotkeyCombination &combination)
{
    return QStringLiteral("toggle-dashboard-%1-%2")
        .arg(combination.keyCode)
        .arg(combination.modifiers);
}

QDBusMessage portalCall(const QString &interface, const QString &method)
{
    return QDBusMessage::createMethodCall(DesktopPortal::service, DesktopPortal::path, interface,
                                          method);
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
    connect(&m_noPortal, &QTimer::timeout, this,
            [this] { giveUp(HotkeyObstacle::NoService, "no desktop portal answers"); });
}

void PortalRegistrar::bind(const HotkeyCombination &combination, std::function<void()> pressed)
{
    unbind();
    m_combination = combination;
    m_pressed = std::move(pressed);
    // Once for a burst of changes: key and modifiers are stored one after the other, and the
    // desktop must not ask the user about half a combination.
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
    // A connection of its own: Register() must be the first call of a portal on it.
    m_bus = std::make_unique<BusConnection>();
    connect(m_bus.get(), &BusConnection::connected, this, &PortalRegistrar::connectSignals);
    m_service = std::make_unique<BusName>(*m_bus, DesktopPortal::service);
    connect(m_service.get(), &BusName::changed, this, &PortalRegistrar::handleOwner);
    m_noPortal.start();
}

/// With the connection the portal ends all that belongs to it: the session, open requests, a
/// dialog.
void PortalRegistrar::closeBus()
{
    m_service.reset();
    forgetPortal();
    m_noPortal.stop();
    m_bus.reset();
}

void PortalRegistrar::forgetPortal()
{
    m_receiver.reset();
    m_step = Step::Idle;
    m_portal.clear();
}

void PortalRegistrar::connectSignals()
{
    QDBusConnection connection = *m_bus->connection();
    // From any sender: for a sender's name Qt would wait for the bus.
    const QString response = QStringLiteral("Response");
    connection.connect(QString(), handle(createToken), requestInterface, response, this,
                       SLOT(takeSessionResponse(QDBusMessage)));
    connection.connect(QString(), handle(bindToken), requestInterface, response, this,
                       SLOT(takeBindResponse(QDBusMessage)));
    connection.connect(QString(), DesktopPortal::path, shortcutsInterface,
                       QStringLiteral("Activated"), this, SLOT(handleActivation(QDBusMessage)));
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
    if (!previous) { // the bus is there; the call starts a portal that does not run
        introduce();
        return;
    }
    if (*owner == m_portal)
        return; // started by our call
    m_receiver.reset();
    m_step = Step::Idle;
    if (owner->isEmpty()) {
        m_noPortal.start();
        return;
    }
    if (m_portal.isEmpty())
        introduce();
    else // On a new connection: the desktop's part of the portal may still hold the session's path.
        m_start.start(0);
}

/// Tells the portal which program this connection belongs to. Any answer, an error too, tells the
/// portal's unique name.
void PortalRegistrar::introduce()
{
    m_receiver = std::make_unique<QObject>();
    QDBusMessage call = portalCall(registryInterface, QStringLiteral("Register"));
    call << applicationIdentifier << QVariantMap();
    const auto proceed = [this](const BusReply<void> &reply) {
        if (reply.isTimeout())
            return introduce();
        if (!reply.sender().startsWith(u':')) // the bus has answered in place of a portal
            return giveUp(HotkeyObstacle::NoService, "this session has no desktop portal");
        m_portal = reply.sender();
        createSession();
    };
    m_bus->call<void>(call, m_receiver.get(), proceed, CallTimeout);
}

void PortalRegistrar::createSession()
{
    m_noPortal.stop();
    setObstacle(HotkeyObstacle::None); // until it answers
    m_step = Step::CreatingSession;
    QDBusMessage message = portalCall(shortcutsInterface, QStringLiteral("CreateSession"));
    // With the shortcut: Plasma 5 takes it only here.
    message << QVariantMap{{QStringLiteral("handle_token"), createToken},
                           {QStringLiteral("session_handle_token"), sessionToken},
                           {QStringLiteral("shortcuts"), shortcuts()}};
    call(message, HotkeyObstacle::NoService);
}

void PortalRegistrar::bindShortcut()
{
    m_step = Step::Binding;
    QDBusMessage message = portalCall(shortcutsInterface, QStringLiteral("BindShortcuts"));
    message << QDBusObjectPath(handle(sessionToken)) << shortcuts() << QString()
            << QVariantMap{{QStringLiteral("handle_token"), bindToken}};
    call(message, HotkeyObstacle::Refused);
}

/// The one that is wanted, as a value for the bus.
QVariant PortalRegistrar::shortcuts() const
{
    PortalShortcut shortcut{shortcutName(m_combination),
                            {{QStringLiteral("description"), tr("Open the meterkin dashboard")}}};
    // Without a trigger the user can still choose one.
    if (const QString keys = trigger(); !keys.isEmpty())
        shortcut.properties.insert(QStringLiteral("preferred_trigger"), keys);
    return shortcutsForBus({shortcut});
}

/// Triggers name symbols. Desktops expect the American ones where the layout has another script.
QString PortalRegistrar::trigger() const
{
    const std::uint32_t present = m_findKeysym(m_combination.keyCode);
    return shortcutTrigger(m_combination,
                           present <= LastOfLatin ? present : ansiKeysym(m_combination.keyCode));
}

void PortalRegistrar::giveUp(HotkeyObstacle obstacle, const char *reason)
{
    if (this->obstacle() != obstacle)
        qCWarning(logHotkey, "The hot key is not bound: %s; retried when a portal starts", reason);
    m_noPortal.stop();
    m_step = Step::Idle;
    setObstacle(obstacle);
}

/// The portal sends its answer as a Response signal; the reply tells only errors.
void PortalRegistrar::call(const QDBusMessage &call, HotkeyObstacle onError)
{
    const auto takeReply = [this, onError](const BusReply<void> &reply) {
        if (!reply.isValid())
            giveUp(onError,
                   qPrintable(QStringLiteral("the desktop portal refuses: ")
                              + reply.error().message()));
    };
    m_bus->call<void>(call, m_receiver.get(), takeReply, CallTimeout);
}

bool PortalRegistrar::isFromPortal(const QDBusMessage &response, Step step) const
{
    return m_step == step && response.service() == m_portal;
}

void PortalRegistrar::takeSessionResponse(const QDBusMessage &response)
{
    if (!isFromPortal(response, Step::CreatingSession))
        return;
    if (response.arguments().value(0) != QVariant(0U))
        return giveUp(HotkeyObstacle::Refused, "the desktop refuses a session for shortcuts");
    for (const PortalShortcut &shortcut : listedShortcuts(response)) {
        if (shortcut.id == shortcutName(m_combination))
            return takeBound(shortcut.properties.value(QStringLiteral("trigger_description")));
    }
    bindShortcut();
}

/// The desktop has taken the shortcut with the session. To bind it as well would open the desktop's
/// settings, even where the user has left it without keys there; keys can be given at any time.
void PortalRegistrar::takeBound(const QVariant &keys)
{
    m_step = Step::Bound;
    if (!keys.toString().isEmpty())
        return;
    qCWarning(logHotkey,
              "The hot key does not work: the desktop has no keys for it; choose them in the "
              "desktop's settings for shortcuts");
    setObstacle(HotkeyObstacle::Refused);
}

void PortalRegistrar::takeBindResponse(const QDBusMessage &response)
{
    if (!isFromPortal(response, Step::Binding))
        return;
    // Also when the answer lacks the shortcut: some desktops always leave it out, and on others the
    // user can assign keys later.
    if (response.arguments().value(0) == QVariant(0U))
        m_step = Step::Bound;
    else
        giveUp(HotkeyObstacle::Refused, "the user or the desktop has refused it");
}

void PortalRegistrar::handleActivation(const QDBusMessage &activation)
{
    const QVariantList arguments = activation.arguments();
    const QString session = arguments.value(0).value<QDBusObjectPath>().path();
    if (!isFromPortal(activation, Step::Bound) || !m_pressed || session != handle(sessionToken)
        || arguments.value(1).toString() != shortcutName(m_combination))
        return;
    setObstacle(HotkeyObstacle::None); // the user may have chosen keys since
    if (activation.signature() == u"osta{sv}") // newer portals
        acceptActivationToken(qdbus_cast<QVariantMap>(arguments.at(3))
                                  .value(QStringLiteral("activation_token"))
                                  .toString());
    const auto pressed = m_pressed; // a copy, since it may bind another one
    pressed();
}

void PortalRegistrar::handleClosedSession(const QDBusMessage &closing)
{
    if (closing.service() == m_portal)
        giveUp(HotkeyObstacle::Refused, "the desktop has ended the session");
}

/// The object path that the portal gives to the request or session of this token.
QString PortalRegistrar::handle(const QString &token) const
{
    const QString folder =
        token == sessionToken ? QStringLiteral("/session/") : QStringLiteral("/request/");
    const QString sender = m_bus->connection()->baseService().mid(1).replace(u'.', u'_');
    return DesktopPortal::path + folder + sender + u'/' + token;
}
