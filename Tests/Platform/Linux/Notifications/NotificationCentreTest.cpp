#include "Platform/Linux/Notifications/NotificationCentre.h"
#include "Support/PrivateBus.h"
#include "Support/ScriptedService.h"
#include "Support/TestMain.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QtTest>

namespace {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

const QString service = u"org.freedesktop.Notifications"_s;
const QString serverPath = u"/org/freedesktop/Notifications"_s;
const QStringList rich{u"actions"_s, u"body-markup"_s};

enum class Answer { Good, Error, None };

/// A notification server that numbers its notifications from 41 on, replaced ones too.
struct ScriptedServer : ScriptedService {
    using ScriptedService::ScriptedService;
    QStringList capabilities;
    Answer toCapabilities = Answer::Good;
    Answer toNotify = Answer::Good;
    QList<QDBusMessage> posts;
    QStringList bodies; ///< of the posts, each after the number that it replaces

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &) override
    {
        const bool isPost = message.member() == u"Notify";
        if (isPost) {
            const QVariantList values = message.arguments();
            posts << message;
            bodies << QString::number(values[1].toUInt()) + u' ' + values[4].toString();
        }
        const Answer answer = isPost ? toNotify : toCapabilities;
        if (answer == Answer::Error)
            connection.send(message.createErrorReply(QDBusError::Failed, QString()));
        else if (answer == Answer::Good && isPost)
            connection.send(message.createReply(40U + static_cast<uint>(posts.size())));
        else if (answer == Answer::Good)
            connection.send(message.createReply(capabilities));
        return true;
    }
};

/// A program that posts, on a bus of its own.
struct Session {
    PrivateBus daemon;
    QDBusConnection client = daemon.connectClient();
    BusConnection bus{BusConnection::Kind::Session, {.reply = 1s, .firstRetry = 100ms}};
    LinuxNotificationCentre centre{bus};
    std::optional<ScriptedServer> server;
    QStringList clicked;

    Session()
    {
        QObject::connect(&centre, &NotificationCentre::clicked, &centre,
                         [this](const QString &identifier) { clicked << identifier; });
    }

    bool startServer(const QStringList &capabilities = rich)
    {
        server.emplace(client, service, serverPath).capabilities = capabilities;
        return waitFor(AuthorizationAnswer::Granted);
    }
    /// Waits until the centre gives that answer, and checks that each comes later.
    bool waitFor(AuthorizationAnswer wanted)
    {
        return QTest::qWaitFor([this, wanted] {
            AuthorizationAnswer told = AuthorizationAnswer::Refused; // which it never says
            centre.requestAuthorization([&told](AuthorizationAnswer answer) { told = answer; });
            const bool isLater = told == AuthorizationAnswer::Refused;
            QCoreApplication::processEvents();
            return isLater && told == wanted;
        });
    }
    void post(const QString &identifier, const QString &body)
    {
        centre.post({identifier, u"Title"_s, body});
    }
    bool hasPosted(const QString &bodies)
    {
        return QTest::qWaitFor([&] { return server->bodies.join(u'|') == bodies; });
    }
    /// Returns when the bus has passed it on.
    static void emitSignal(const QDBusConnection &sender, const QString &name,
                           const QVariantList &arguments)
    {
        ScriptedService::emitSignal(sender, serverPath, service, name, arguments);
        sender.interface()->isServiceRegistered(service);
    }
    void click(uint number) { emitSignal(client, u"ActionInvoked"_s, {number, u"default"_s}); }
};

} // namespace

class LinuxNotificationCentreTest : public QObject {
    Q_OBJECT

private slots:
    void answersAboutAuthorization()
    {
        Session s;
        std::optional<NotificationAuthorization> told;
        const auto tell = [&told](NotificationAuthorization answer) { told = answer; };
        QVERIFY(s.waitFor(AuthorizationAnswer::Failed)); // nothing is known yet
        s.centre.queryAuthorization(tell);
        QTRY_COMPARE(told, NotificationAuthorization::NotDetermined);
        s.post(u"fan"_s, u"no server"_s);
        QVERIFY(s.startServer());
        s.server.reset();
        QVERIFY(s.waitFor(AuthorizationAnswer::Failed));
        s.daemon.addService(service, u"/bin/true"_s);
        QVERIFY(s.waitFor(AuthorizationAnswer::Granted));
        s.post(u"fan"_s, u"old"_s);
        s.post(u"fan"_s, u"new"_s);
        QVERIFY(s.startServer());
        QVERIFY(s.hasPosted(u"0 new"_s));

        s.daemon.stop();
        QVERIFY(s.waitFor(AuthorizationAnswer::Failed));
        s.centre.queryAuthorization(tell);
        s.daemon.start();
        QTRY_COMPARE(told, NotificationAuthorization::Authorized);
    }

    void doesNotBlameTheServerForTheBus()
    {
        QTest::failOnWarning(QRegularExpression(u"server"_s));
        Session s;
        s.daemon.addService(service, u"/bin/sleep 60"_s);
        QVERIFY(s.waitFor(AuthorizationAnswer::Granted));
        s.post(u"fan"_s, u"lost"_s);
        QVERIFY(!s.bus.connection()->interface()->isServiceRegistered(service)); // after the post
        s.daemon.stop();
        QVERIFY(s.waitFor(AuthorizationAnswer::Failed));
        QTest::qWait(100);
    }

    void suitsTheServer()
    {
        for (const auto &[capabilities, toCapabilities] : {std::pair(QStringList(), Answer::Good),
                                                           {rich, Answer::Good},
                                                           {rich, Answer::Error},
                                                           {rich, Answer::None}}) {
            Session s;
            QVERIFY(s.startServer(capabilities));
            s.server->toCapabilities = toCapabilities;
            s.post(u"fan"_s, u"overtaken"_s);
            s.post(u"fan"_s, u"a < b"_s);
            const bool isRich = capabilities == rich && toCapabilities == Answer::Good;
            QVERIFY(s.hasPosted(isRich ? u"0 a &lt; b"_s : u"0 a < b"_s));
            QCOMPARE(s.server->posts[0].signature(), u"susssasa{sv}i"_s);
            const QVariantList values = s.server->posts[0].arguments();
            QCOMPARE(values[5].toStringList().contains(u"default"), isRich);
            QCOMPARE(qdbus_cast<QVariantMap>(values[6]).value(u"urgency"_s),
                     QVariant::fromValue<uchar>(1)); // servers reject other types
        }
    }

    void replacesTheOneStillListed()
    {
        Session s;
        QVERIFY(s.startServer());
        s.post(u"fan"_s, u"a"_s); // 41
        s.post(u"memory"_s, u"b"_s); // 42
        QVERIFY(s.hasPosted(u"0 a|0 b"_s));
        s.post(u"fan"_s, u"c"_s); // 43
        QVERIFY(s.hasPosted(u"0 a|0 b|41 c"_s));
        s.emitSignal(s.client, u"NotificationClosed"_s, {43U, 2U});
        s.click(42);
        QTRY_COMPARE(s.clicked.size(), 1); // by now it knows
        s.server->bodies.clear();
        s.post(u"fan"_s, u"d"_s); // 44
        QVERIFY(s.hasPosted(u"0 d"_s));
        s.server->toNotify = Answer::Error;
        s.post(u"fan"_s, u"e"_s);
        QVERIFY(s.hasPosted(u"0 d|44 e"_s));
        s.server->toNotify = Answer::None;
        s.post(u"fan"_s, u"f"_s); // 46, answered below
        QVERIFY(s.hasPosted(u"0 d|44 e|44 f"_s));
        s.post(u"fan"_s, u"overtaken"_s);
        s.post(u"fan"_s, u"g"_s);
        s.post(u"memory"_s, u"h"_s); // which waits for no other reply
        QVERIFY(s.hasPosted(u"0 d|44 e|44 f|42 h"_s));
        s.server->connection.send(s.server->posts[5].createReply(46U));
        QVERIFY(s.hasPosted(u"0 d|44 e|44 f|42 h|46 g"_s));
    }

    void knowsClicksOnItsOwn()
    {
        Session s;
        QVERIFY(s.startServer());
        s.post(u"fan"_s, u"body"_s);
        QVERIFY(s.hasPosted(u"0 body"_s));
        const QDBusConnection stranger = s.daemon.connectClient();
        s.emitSignal(stranger, u"ActionInvoked"_s, {41U, u"default"_s});
        s.emitSignal(stranger, u"NotificationClosed"_s, {41U, 1U});
        s.emitSignal(s.client, u"ActionInvoked"_s, {41U, u"other"_s});
        s.click(40);
        s.emitSignal(s.client, u"ActionInvoked"_s, {u"41"_s});
        s.emitSignal(s.client, u"ActivationToken"_s, {41U, u"proof"_s});
        s.emitSignal(s.client, u"ActivationToken"_s, {40U, u"another program's"_s});
        for (int round = 0; round < 2; ++round) {
            s.click(41);
            s.emitSignal(s.client, u"NotificationClosed"_s, {41U, 2U});
        }
        QTRY_COMPARE(s.clicked, QStringList(u"fan"_s));
        QCOMPARE(qgetenv("XDG_ACTIVATION_TOKEN"), QByteArray("proof"));

        s.post(u"fan"_s, u"42"_s);
        QVERIFY(s.hasPosted(u"0 body|0 42"_s));
        s.server.reset();
        QVERIFY(s.waitFor(AuthorizationAnswer::Failed));
        QVERIFY(s.startServer());
        s.click(42); // another program's by now
        s.post(u"fan"_s, u"a"_s);
        QVERIFY(s.hasPosted(u"0 a"_s));
        QCOMPARE(s.clicked.size(), 1);
    }
};

METERKIN_TEST(LinuxNotificationCentreTest);
#include "NotificationCentreTest.moc"
