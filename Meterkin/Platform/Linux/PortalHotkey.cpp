#include "Platform/Linux/PortalHotkey.h"

#include "Platform/Linux/ShortcutTrigger.h"

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
constexpr int CallMilliseconds = 60'000;

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

PortalHotkey::PortalHotkey(QObject *parent)
    : QObject(parent)
{
    m_start.setSingleShot(true);
    connect(&m_start, &QTimer::timeout, this, &PortalHotkey::openBus);
}

bool PortalHotkey::installPressHandler(std::function<void()> pressed)
{
    m_pressed = std::move(pressed);
    return true;
}

void PortalHotkey::removePressHandler()
{
    m_pressed = nullptr;
}

bool PortalHotkey::registerHotkey(const HotkeyCombination &combination, const HotkeyIdentifier &)
{
    unregisterHotkey();
    m_combination = combination;
    // Once for a burst of changes: key and modifiers are stored one after the other, and the user
    // must not be asked about the halves.
    m_start.start(0);
    return true;
}

void PortalHotkey::unregisterHotkey()
{
    m_start.stop();
    closeBus();
}

void PortalHotkey::openBus()
{
    closeBus();
    // A connection of its own, since the introduction must be the first that a portal hears on it.
    m_bus = std::make_unique<MessageBus>();
    connect(m_bus.get(), &MessageBus::connected, this, &PortalHotkey::follow);
    connect(m_bus.get(), &MessageBus::disconnected, this, [this] {
        m_service.reset();
        forgetPortal();
    });
}

/// With the connection all that the portal holds for it ends: the session, a request whose answer
/// is still to come, a dialog.
void PortalHotkey::closeBus()
{
    m_service.reset();
    forgetPortal();
    m_bus.reset();
}

void PortalHotkey::forgetPortal()
{
    m_talk.reset();
    m_step = Step::Idle;
    m_portal.clear();
}

void PortalHotkey::follow()
{
    QDBusConnection connection = *m_bus->connection();
    m_service = std::make_unique<QDBusServiceWatcher>(service, connection,
                                                      QDBusServiceWatcher::WatchForOwnerChange);
    connect(m_service.get(), &QDBusServiceWatcher::serviceOwnerChanged, this,
            &PortalHotkey::handleOwner);

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
    introduce();
}

void PortalHotkey::handleOwner(const QString &, const QString &, const QString &newOwner)
{
    if (newOwner == m_portal)
        return; // it was our call that started it
    m_talk.reset();
    m_step = Step::Idle;
    if (newOwner.isEmpty())
        return;
    if (m_portal.isEmpty())
        introduce();
    else // The desktop's part of the portal, which may have stayed, still holds the session's path.
        m_start.start(0);
}

/// Says which program this connection belongs to. The answer, also that there is no such thing
/// here, tells who the portal is.
void PortalHotkey::introduce()
{
    m_talk = std::make_unique<QObject>();
    QDBusMessage call = portalCall(registryInterface, QStringLiteral("Register"));
    call << applicationIdentifier << QVariantMap();
    const auto proceed = [this](const QDBusMessage &reply) {
        if (MessageBus::isTimeout(reply))
            return introduce();
        // No portal answers from a unique name: the bus does in its place, or the clock.
        if (!reply.service().startsWith(u':'))
            return;
        m_portal = reply.service();
        createSession();
    };
    m_bus->call(call, m_talk.get(), proceed, CallMilliseconds);
}

void PortalHotkey::createSession()
{
    m_step = Step::CreatingSession;
    QDBusMessage message = portalCall(shortcutsInterface, QStringLiteral("CreateSession"));
    message << QVariantMap{{QStringLiteral("handle_token"), createToken},
                           {QStringLiteral("session_handle_token"), sessionToken}};
    call(message);
}

void PortalHotkey::bind()
{
    m_step = Step::Binding;
    qDBusRegisterMetaType<PortalShortcut>();
    qDBusRegisterMetaType<QList<PortalShortcut>>();
    PortalShortcut shortcut{
        shortcutName(m_combination),
        {{QStringLiteral("description"), QStringLiteral("Open the meterkin dashboard")}}};
    // Without one the user can still choose.
    if (const QString trigger = shortcutTrigger(m_combination); !trigger.isEmpty())
        shortcut.properties.insert(QStringLiteral("preferred_trigger"), trigger);
    QDBusMessage message = portalCall(shortcutsInterface, QStringLiteral("BindShortcuts"));
    message << QDBusObjectPath(handle(sessionToken))
            << QVariant::fromValue(QList<PortalShortcut>{shortcut}) << QString()
            << QVariantMap{{QStringLiteral("handle_token"), bindToken}};
    call(message);
}

/// The true answer is the response that follows; only an error comes at once.
void PortalHotkey::call(const QDBusMessage &call)
{
    const auto giveUp = [this](const QDBusMessage &reply) {
        if (reply.type() != QDBusMessage::ReplyMessage)
            m_step = Step::Idle;
    };
    m_bus->call(call, m_talk.get(), giveUp, CallMilliseconds);
}

bool PortalHotkey::isAnswer(const QDBusMessage &response, Step step) const
{
    return m_step == step && response.service() == m_portal;
}

void PortalHotkey::takeSessionResponse(const QDBusMessage &response)
{
    if (!isAnswer(response, Step::CreatingSession))
        return;
    if (response.arguments().value(0) == QVariant(0U))
        bind();
    else
        m_step = Step::Idle;
}

void PortalHotkey::takeBindResponse(const QDBusMessage &response)
{
    if (!isAnswer(response, Step::Binding))
        return;
    // Even when the shortcut is missing in the answer: some desktops always leave it out, and on
    // others the user can give it keys later.
    m_step = response.arguments().value(0) == QVariant(0U) ? Step::Bound : Step::Idle;
}

void PortalHotkey::handleActivation(const QDBusMessage &activation)
{
    const QVariantList arguments = activation.arguments();
    const QString session = arguments.value(0).value<QDBusObjectPath>().path();
    if (!isAnswer(activation, Step::Bound) || !m_pressed || session != handle(sessionToken)
        || arguments.value(1).toString() != shortcutName(m_combination))
        return;
    const auto pressed = m_pressed; // may be replaced while it runs
    pressed();
}

void PortalHotkey::handleClosedSession(const QDBusMessage &closing)
{
    if (closing.service() == m_portal)
        m_step = Step::Idle;
}

/// Where the portal puts the request or the session that bears this token.
QString PortalHotkey::handle(const QString &token) const
{
    const QString folder =
        token == sessionToken ? QStringLiteral("/session/") : QStringLiteral("/request/");
    const QString sender = m_bus->connection()->baseService().mid(1).replace(u'.', u'_');
    return portalPath + folder + sender + u'/' + token;
}
