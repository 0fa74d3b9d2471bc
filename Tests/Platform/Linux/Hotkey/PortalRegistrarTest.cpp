#include "Platform/Linux/Hotkey/PortalRegistrar.h"
#include "Platform/Linux/Hotkey/PortalShortcut.h"
#include "Support/PrivateBus.h"
#include "Support/ScriptedService.h"
#include "Support/TestMain.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

const QString portalPath = u"/org/freedesktop/portal/desktop"_s;
constexpr HotkeyCombination ControlOptionM{46, CarbonModifier::control | CarbonModifier::option};
constexpr HotkeyCombination CommandF5{96, CarbonModifier::command};

/// A portal with one shortcut at a time, whose answers the test holds back or spoils.
struct ScriptedPortal : ScriptedService {
    QString failing; ///< the methods that are answered with an error
    QString holding; ///< the method whose response is not sent
    QString denying; ///< the method that the user says no to
    std::optional<QString> listedKeys; ///< takes the shortcut with the session, with these keys
    QString listedId; ///< of another shortcut, which is listed in its place
    QString client; ///< the last caller
    QString session = u"/none"_s;
    QString id; ///< of the shortcut
    QVariant trigger; ///< as it was last bound
    QString calls; ///< their methods

    using ScriptedService::ScriptedService;

    bool isBound() const
    {
        return !id.isEmpty() && connection.interface()->isServiceRegistered(client);
    }
    void press() { activate(connection, session, id); }
    static void activate(const QDBusConnection &sender, const QString &session, const QString &id)
    {
        emitSignal(sender, portalPath, u"org.freedesktop.portal.GlobalShortcuts"_s, u"Activated"_s,
                   {QVariant::fromValue(QDBusObjectPath(session)), id, 1ULL,
                    QVariantMap{{u"activation_token"_s, u"proof"_s}}});
    }
    /// Returns once the client has taken what was sent to it before.
    void settle()
    {
        connection.call(QDBusMessage::createMethodCall(client, u"/"_s,
                                                       u"org.freedesktop.DBus.Peer"_s, u"Ping"_s),
                        QDBus::BlockWithGui, 5000);
        QCoreApplication::sendPostedEvents();
    }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &) override
    {
        const QString method = message.member();
        const QVariantList arguments = message.arguments();
        calls += method + u' ';
        if (std::exchange(client, message.service()) != message.service())
            id.clear();
        if (failing.contains(method))
            return connection.send(message.createErrorReply(QDBusError::UnknownMethod, u"no"_s));
        const QString folder = client.mid(1).replace(u'.', u'_') + u'/';
        const auto options = qdbus_cast<QVariantMap>(arguments.last());
        QVariantMap results;
        if (method == u"BindShortcuts") {
            session = arguments.first().value<QDBusObjectPath>().path();
            takeShortcut(arguments[1]);
        } else if (method == u"CreateSession" && listedKeys) {
            session = portalPath + u"/session/"_s + folder
                + options[u"session_handle_token"_s].toString();
            takeShortcut(options[u"shortcuts"_s]);
            results[u"shortcuts"_s] = listed();
        }
        connection.send(message.createReply(QVariant::fromValue(QDBusObjectPath(u"/unused"_s))));
        if (options.contains(u"handle_token"_s) && method != holding)
            emitSignal(connection,
                       portalPath + u"/request/"_s + folder + options[u"handle_token"_s].toString(),
                       u"org.freedesktop.portal.Request"_s, u"Response"_s,
                       {method == denying ? 1U : 0U, results});
        return true;
    }

private:
    void takeShortcut(const QVariant &list)
    {
        const PortalShortcut taken = qdbus_cast<QList<PortalShortcut>>(list).value(0);
        id = taken.id;
        trigger = taken.properties[u"preferred_trigger"_s];
    }
    QVariant listed() const
    {
        return shortcutsForBus(
            {{listedId.isEmpty() ? id : listedId, {{u"trigger_description"_s, *listedKeys}}}});
    }
};

struct Session {
    PrivateBus daemon;
    PortalRegistrar hotkey;
    std::optional<ScriptedPortal> portal;
    int presses = 0;

    void bind(const HotkeyCombination &combination)
    {
        hotkey.bind(combination, [this] { ++presses; });
    }
    void openPortal()
    {
        portal.emplace(daemon.connectClient(), u"org.freedesktop.portal.Desktop"_s, portalPath);
    }
    /// Whether a press arrives, exactly once, as soon as the shortcut is bound.
    bool pressWorks()
    {
        const int before = presses;
        return QTest::qWaitFor([this] { return portal->isBound(); })
            && (portal->press(), QTest::qWaitFor([&] { return presses > before; }))
            && presses == before + 1;
    }
};

} // namespace

class PortalRegistrarTest : public QObject {
    Q_OBJECT

private slots:
    void bindsOnce()
    {
        Session s;
        s.openPortal();
        s.bind({46, CarbonModifier::shift});
        s.bind(ControlOptionM); // the second half of a recording
        QVERIFY(s.pressWorks());
        QCOMPARE(qgetenv("XDG_ACTIVATION_TOKEN"), QByteArray("proof"));
        QCOMPARE(s.portal->calls, u"Register CreateSession BindShortcuts "_s);
        QCOMPARE(s.portal->trigger, u"CTRL+ALT+m"_s);
        const QString firstId = s.portal->id;

        // From another sender, of another session, of another shortcut.
        const QDBusConnection stranger = s.daemon.connectClient();
        s.portal->activate(stranger, s.portal->session, firstId);
        s.portal->activate(s.portal->connection, s.portal->session + u'x', firstId);
        s.portal->activate(s.portal->connection, s.portal->session, firstId + u'x');
        QVERIFY(stranger.interface()->registeredServiceNames().isValid()); // what it sent is out
        s.portal->settle();
        QVERIFY(s.pressWorks());

        s.hotkey.bind(CommandF5, [&s] { s.bind(ControlOptionM); }); // replaces itself
        QTRY_VERIFY(s.portal->isBound() && s.portal->id != firstId);
        s.portal->press();
        QTRY_COMPARE(s.portal->id, firstId);
        QVERIFY(s.pressWorks());
    }

    void takesWhatTheSessionBrought()
    {
        Session s;
        s.openPortal();
        for (const auto &[keys, id, calls, obstacle] :
             {std::tuple(u"Ctrl+Alt+M"_s, QString(), u"Register CreateSession "_s,
                         HotkeyObstacle::None),
              {QString(), QString(), u"Register CreateSession "_s, HotkeyObstacle::Refused},
              {u"Ctrl+Alt+M"_s, u"another"_s, u"Register CreateSession BindShortcuts "_s,
               HotkeyObstacle::None}}) {
            s.portal->calls.clear();
            s.portal->listedKeys = keys;
            s.portal->listedId = id;
            s.bind(ControlOptionM);
            QTRY_COMPARE(s.portal->calls, calls);
            QTRY_COMPARE(s.hotkey.obstacle(), obstacle);
            QVERIFY(s.pressWorks()); // with keys that the user has chosen later, too
            QCOMPARE(s.hotkey.obstacle(), HotkeyObstacle::None);
            QCOMPARE(s.portal->trigger, u"CTRL+ALT+m"_s);
        }
    }

    void cancelsWhatIsUnderWay()
    {
        Session s;
        s.openPortal();
        for (const QString &method : {u"CreateSession"_s, u"BindShortcuts"_s}) {
            s.portal->holding = method;
            s.portal->calls.clear();
            s.bind(ControlOptionM);
            QTRY_VERIFY(s.portal->calls.contains(method));
            s.portal->holding.clear();
            const QString first = s.portal->client;
            s.hotkey.unbind();
            s.bind(CommandF5);
            QTRY_VERIFY(!s.portal->connection.interface()->isServiceRegistered(first));
            QVERIFY(s.pressWorks());
        }
    }

    void acceptsARefusal()
    {
        Session s;
        s.openPortal();
        for (const auto &[failing, denying, obstacle] :
             {std::tuple(u""_s, u"CreateSession"_s, HotkeyObstacle::Refused),
              {u""_s, u"BindShortcuts"_s, HotkeyObstacle::Refused},
              {u"CreateSession"_s, u""_s, HotkeyObstacle::NoService},
              {u"BindShortcuts"_s, u""_s, HotkeyObstacle::Refused}}) {
            s.portal->failing = u"Register "_s + failing; // older portals have no registry
            s.portal->denying = denying;
            const int before = s.presses;
            s.bind(ControlOptionM);
            QTRY_COMPARE(s.hotkey.obstacle(), obstacle);
            s.portal->calls.clear();
            s.portal->failing.clear();
            s.portal->denying.clear();
            s.portal->press();
            s.portal->settle();
            QCOMPARE(s.portal->calls, QString()); // no retry until something changes
            QCOMPARE(s.presses, before);
            s.portal->id.clear();
            s.bind(CommandF5);
            QVERIFY(s.pressWorks());
        }
    }

    void followsThePortal()
    {
        Session s;
        s.bind(ControlOptionM);
        QTRY_COMPARE(s.hotkey.obstacle(), HotkeyObstacle::NoService);
        s.openPortal();
        QVERIFY(s.pressWorks());
        QCOMPARE(s.hotkey.obstacle(), HotkeyObstacle::None);
        s.openPortal(); // another one
        QVERIFY(s.pressWorks());

        s.portal->emitSignal(s.portal->connection, s.portal->session,
                             u"org.freedesktop.portal.Session"_s, u"Closed"_s, {QVariantMap()});
        s.portal->press();
        s.portal->settle();
        QCOMPARE(s.presses, 2);

        s.portal.reset();
        s.daemon.stop();
        s.daemon.start();
        s.openPortal();
        QTRY_VERIFY_WITH_TIMEOUT(s.portal->isBound(), 20'000);
        QVERIFY(s.pressWorks());
    }
};

METERKIN_TEST(PortalRegistrarTest);
#include "PortalRegistrarTest.moc"
