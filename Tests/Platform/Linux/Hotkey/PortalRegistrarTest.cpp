#include "Platform/Linux/Hotkey/PortalRegistrar.h"
#include "Support/PrivateBus.h"
#include "Support/TestMain.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusObjectPath>
#include <QDBusServiceWatcher>
#include <QDBusVirtualObject>
#include <QtTest>

#include <utility>

namespace {

const QString portalName = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString shortcuts = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");
constexpr HotkeyCombination ControlOptionM{46, CarbonModifier::control | CarbonModifier::option};
constexpr HotkeyCombination CommandF5{96, CarbonModifier::command};

/// A portal with one shortcut at a time, whose answers the test holds back or spoils.
class ScriptedPortal : public QDBusVirtualObject {
public:
    explicit ScriptedPortal(const QDBusConnection &connection)
        : m_connection(connection)
    {
        m_connection.registerVirtualObject(portalPath, this, QDBusConnection::SubPath);
        m_connection.registerService(portalName);
        m_clients.setConnection(connection);
        connect(&m_clients, &QDBusServiceWatcher::serviceUnregistered, this,
                [this](const QString &name) {
                    m_clients.removeWatchedService(name);
                    if (client == name)
                        client.clear();
                });
    }
    ~ScriptedPortal() override
    {
        m_connection.unregisterService(portalName);
        m_connection.unregisterObject(portalPath, QDBusConnection::UnregisterTree);
    }

    QStringList failing; ///< methods that are answered with an error
    QString holding; ///< the method whose response does not come
    QString denying; ///< the method that the user says no to

    QString client; ///< who called last, until it leaves the bus
    QString session;
    QString id;
    QVariantMap shortcut; ///< as it was last bound
    QStringList calls; ///< their methods

    void press() { activate(m_connection, session, id); }
    QDBusConnection connection() const { return m_connection; }
    bool isBound() const { return !client.isEmpty() && !id.isEmpty(); }
    qsizetype clients() const { return m_clients.watchedServices().size(); }
    /// Returns once the client has taken what was sent to it before.
    void settle()
    {
        m_connection.call(QDBusMessage::createMethodCall(
                              client, QStringLiteral("/"),
                              QStringLiteral("org.freedesktop.DBus.Peer"), QStringLiteral("Ping")),
                          QDBus::BlockWithGui, 5000);
        QCoreApplication::sendPostedEvents();
    }
    void closeSession()
    {
        signal(session, QStringLiteral("org.freedesktop.portal.Session"), QStringLiteral("Closed"),
               {QVariantMap()});
    }
    static void activate(const QDBusConnection &connection, const QString &ofSession,
                         const QString &ofId)
    {
        QDBusMessage message =
            QDBusMessage::createSignal(portalPath, shortcuts, QStringLiteral("Activated"));
        message << QVariant::fromValue(QDBusObjectPath(ofSession)) << ofId << qulonglong(1)
                << QVariantMap();
        connection.send(message);
    }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &) override
    {
        const QString method = message.member();
        const QVariantList arguments = message.arguments();
        calls += method;
        if (std::exchange(client, message.service()) != message.service())
            id.clear();
        if (failing.contains(method))
            return m_connection.send(
                message.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("no")));
        QString token;
        if (method == u"CreateSession") {
            const auto options = qdbus_cast<QVariantMap>(arguments.value(0));
            token = options[QStringLiteral("handle_token")].toString();
            m_clients.addWatchedService(client);
            session = handle(QStringLiteral("/session/"),
                             options[QStringLiteral("session_handle_token")].toString());
        } else if (method == u"BindShortcuts"
                   && arguments.value(0).value<QDBusObjectPath>().path() == session) {
            token = qdbus_cast<QVariantMap>(arguments.value(3))[QStringLiteral("handle_token")]
                        .toString();
            const auto list = arguments.value(1).value<QDBusArgument>();
            list.beginArray();
            list.beginStructure();
            list >> id >> shortcut;
            list.endStructure();
            list.endArray();
        }
        m_connection.send(
            message.createReply(QVariant::fromValue(QDBusObjectPath(QStringLiteral("/unused")))));
        if (!token.isEmpty() && method != holding)
            signal(handle(QStringLiteral("/request/"), token),
                   QStringLiteral("org.freedesktop.portal.Request"), QStringLiteral("Response"),
                   {method == denying ? 1U : 0U, QVariantMap()});
        return true;
    }
    QString introspect(const QString &) const override { return QString(); }

private:
    QString handle(const QString &kind, const QString &token) const
    {
        return portalPath + kind + client.mid(1).replace(u'.', u'_') + u'/' + token;
    }
    void signal(const QString &path, const QString &interface, const QString &name,
                const QVariantList &arguments)
    {
        QDBusMessage message = QDBusMessage::createTargetedSignal(client, path, interface, name);
        message.setArguments(arguments);
        m_connection.send(message);
    }

    QDBusConnection m_connection;
    QDBusServiceWatcher m_clients;
};

} // namespace

class PortalRegistrarTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_daemon = std::make_unique<PrivateBus>();
        m_hotkey = std::make_unique<PortalRegistrar>();
        m_presses = 0;
    }
    void cleanup()
    {
        m_portal.reset();
        m_hotkey.reset();
        m_daemon.reset();
    }

    void bindsOnce()
    {
        openPortal();
        bind({46, CarbonModifier::shift});
        bind(ControlOptionM); // the second half of a recording
        QVERIFY(pressWorks());
        QCOMPARE(m_portal->calls,
                 QStringList({QStringLiteral("Register"), QStringLiteral("CreateSession"),
                              QStringLiteral("BindShortcuts")}));
        QCOMPARE(m_portal->shortcut.value(QStringLiteral("preferred_trigger")),
                 QStringLiteral("CTRL+ALT+m"));
        const QString firstId = m_portal->id;

        // what others send, and what is meant for others
        const QDBusConnection stranger = m_daemon->connectClient();
        const QString session = m_portal->session;
        ScriptedPortal::activate(stranger, session, firstId);
        ScriptedPortal::activate(m_portal->connection(), session + u'x', firstId);
        ScriptedPortal::activate(m_portal->connection(), session, firstId + u'x');
        QVERIFY(stranger.interface()->registeredServiceNames().isValid()); // what it sent is out
        m_portal->settle();
        QVERIFY(pressWorks());

        // a handler that replaces its own hot key
        m_hotkey->bind(CommandF5, {}, [this] {
            m_hotkey->unbind();
            bind(ControlOptionM);
        });
        QTRY_VERIFY(m_portal->isBound() && m_portal->id != firstId);
        m_portal->press();
        QTRY_COMPARE(m_portal->id, firstId);
        QVERIFY(pressWorks());

        m_hotkey->unbind();
        QTRY_VERIFY(m_portal->client.isEmpty());
    }

    void endsWhatIsUnderWay()
    {
        openPortal();
        for (const QString &method :
             {QStringLiteral("CreateSession"), QStringLiteral("BindShortcuts")}) {
            m_portal->holding = method;
            m_portal->calls.clear();
            bind(ControlOptionM);
            QTRY_VERIFY(m_portal->calls.contains(method));
            const QString first = m_portal->client;
            m_portal->holding.clear();
            bind(CommandF5); // only the newest counts
            QTRY_VERIFY(!m_portal->client.isEmpty() && m_portal->client != first);
            QVERIFY(pressWorks());
            QTRY_COMPARE(m_portal->clients(), 1);

            m_portal->holding = method;
            m_portal->calls.clear();
            bind(ControlOptionM);
            QTRY_VERIFY(m_portal->calls.contains(method));
            m_hotkey->unbind();
            QTRY_COMPARE(m_portal->clients(), 0);
        }
    }

    void takesARefusal_data()
    {
        QTest::addColumn<QString>("failing");
        QTest::addColumn<QString>("denying");
        QTest::addColumn<HotkeyObstacle>("obstacle");
        const QString create = QStringLiteral("CreateSession");
        const QString bind = QStringLiteral("BindShortcuts");
        QTest::newRow("no session") << QString() << create << HotkeyObstacle::Refused;
        QTest::newRow("denied") << QString() << bind << HotkeyObstacle::Refused;
        QTest::newRow("no such portal") << create << QString() << HotkeyObstacle::NoService;
        QTest::newRow("no binding") << bind << QString() << HotkeyObstacle::Refused;
    }
    void takesARefusal()
    {
        openPortal();
        QFETCH(QString, failing);
        QFETCH(QString, denying);
        QFETCH(const HotkeyObstacle, obstacle);
        m_portal->failing = {QStringLiteral("Register"), failing}; // older ones have no registry
        m_portal->denying = denying;
        bind(ControlOptionM);
        QTRY_VERIFY(m_portal->calls.contains(failing + denying));
        m_portal->settle();
        QTRY_COMPARE(m_hotkey->obstacle(), obstacle);
        const QStringList asked = m_portal->calls;
        m_portal->failing.clear();
        m_portal->denying.clear();
        if (!m_portal->session.isEmpty())
            m_portal->press();
        m_portal->settle();
        QCOMPARE(m_portal->calls, asked); // nobody is asked again until something changes
        QCOMPARE(m_presses, 0);
        m_portal->id.clear();
        bind(CommandF5);
        QVERIFY(pressWorks());
    }

    void followsThePortal()
    {
        bind(ControlOptionM);
        const QDBusConnection watcher = m_daemon->connectClient();
        const auto isOnTheBus = [&watcher] { // the bus, the watcher and the hot key
            return watcher.interface()->registeredServiceNames().value().size() >= 3;
        };
        QTRY_VERIFY(isOnTheBus());
        QTRY_COMPARE(m_hotkey->obstacle(), HotkeyObstacle::NoService);
        openPortal();
        QVERIFY(pressWorks());
        QCOMPARE(m_hotkey->obstacle(), HotkeyObstacle::None);

        openPortal(); // another one
        QVERIFY(pressWorks());

        m_portal->closeSession();
        m_portal->press();
        m_portal->settle();
        QCOMPARE(m_presses, 2);

        m_portal.reset();
        m_daemon->stop();
        m_daemon->start();
        openPortal();
        QTRY_VERIFY_WITH_TIMEOUT(m_portal->isBound(), 20'000);
        QVERIFY(pressWorks());
    }

private:
    void bind(const HotkeyCombination &combination)
    {
        m_hotkey->bind(combination, {}, [this] { ++m_presses; });
    }
    void openPortal()
    {
        m_portal.reset();
        m_portal = std::make_unique<ScriptedPortal>(m_daemon->connectClient());
    }
    /// Whether a press is felt, exactly once, as soon as the shortcut is bound.
    bool pressWorks()
    {
        const int before = m_presses;
        return QTest::qWaitFor([this] { return m_portal->isBound(); })
            && (m_portal->press(), QTest::qWaitFor([&] { return m_presses > before; }))
            && m_presses == before + 1;
    }

    std::unique_ptr<PrivateBus> m_daemon;
    std::unique_ptr<PortalRegistrar> m_hotkey;
    std::unique_ptr<ScriptedPortal> m_portal;
    int m_presses = 0;
};

METERKIN_TEST(PortalRegistrarTest);
#include "PortalRegistrarTest.moc"
