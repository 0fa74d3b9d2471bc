#include "Platform/Linux/Notifications/NotificationCentre.h"
#include "Support/PrivateBus.h"
#include "Support/TestMain.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusVirtualObject>
#include <QtTest>

namespace {

using namespace std::chrono_literals;

const QString service = QStringLiteral("org.freedesktop.Notifications");
const QString serverPath = QStringLiteral("/org/freedesktop/Notifications");

enum class Answer { Good, Error, None };

/// A notification server that numbers its notifications from 41 on, replaced ones too.
class ScriptedServer : public QDBusVirtualObject {
public:
    ScriptedServer(const QDBusConnection &connection, const QStringList &capabilities)
        : m_connection(connection)
        , m_capabilities(capabilities)
    {
        m_connection.registerVirtualObject(serverPath, this);
        m_connection.registerService(service);
    }
    ~ScriptedServer() override { m_connection.unregisterService(service); }

    Answer toCapabilities = Answer::Good;
    Answer toNotify = Answer::Good;
    QList<QDBusMessage> posts;
    QStringList bodies; ///< of the posts, each after the number that it replaces

    void answerPost(qsizetype post)
    {
        m_connection.send(posts[post].createReply(41U + static_cast<uint>(post)));
    }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &) override
    {
        const bool isPost = message.member() == QStringLiteral("Notify");
        if (isPost) {
            const QVariantList values = message.arguments();
            posts << message;
            bodies << QString::number(values[1].toUInt()) + u' ' + values[4].toString();
        }
        const Answer answer = isPost ? toNotify : toCapabilities;
        if (answer == Answer::Error)
            m_connection.send(message.createErrorReply(QDBusError::Failed, QString()));
        else if (answer == Answer::Good && isPost)
            answerPost(posts.size() - 1);
        else if (answer == Answer::Good)
            m_connection.send(message.createReply(m_capabilities));
        return true;
    }
    QString introspect(const QString &) const override { return QString(); }

private:
    QDBusConnection m_connection;
    QStringList m_capabilities;
};

/// Tells the bus's clients; returns when the bus has done so.
void announce(const QDBusConnection &connection, const char *name, const QVariantList &values)
{
    QDBusMessage signal =
        QDBusMessage::createSignal(serverPath, service, QString::fromLatin1(name));
    signal.setArguments(values);
    connection.send(signal);
    connection.interface()->isServiceRegistered(service);
}

void click(const QDBusConnection &connection, uint number, const char *action = "default")
{
    announce(connection, "ActionInvoked", {number, QString::fromLatin1(action)});
}

struct Bench {
    explicit Bench(std::chrono::milliseconds replyTimeout = BusTimeouts().reply)
        : bus(BusConnection::Kind::Session, {.reply = replyTimeout, .firstRetry = 100ms})
    {
        QObject::connect(&centre, &NotificationCentre::clicked,
                         [this](const QString &identifier) { clicked << identifier; });
    }
    /// Lets the centre's knowledge catch up.
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
    std::unique_ptr<ScriptedServer> startServer(const QStringList &capabilities = {
                                                    QStringLiteral("actions"),
                                                    QStringLiteral("body-markup")})
    {
        auto server = std::make_unique<ScriptedServer>(connection, capabilities);
        return waitFor(AuthorizationAnswer::Granted) ? std::move(server) : nullptr;
    }
    void post(const char *identifier, const char *body)
    {
        centre.post(
            {QString::fromLatin1(identifier), QStringLiteral("Title"), QString::fromLatin1(body)});
    }

    PrivateBus daemon;
    QDBusConnection connection = daemon.connectClient();
    BusConnection bus;
    LinuxNotificationCentre centre{bus};
    QStringList clicked;
};

} // namespace

Q_DECLARE_METATYPE(Answer)

class LinuxNotificationCentreTest : public QObject {
    Q_OBJECT

private slots:
    void authorization()
    {
        Bench bench;
        std::optional<NotificationAuthorization> told;
        const auto tell = [&told](NotificationAuthorization authorization) {
            told = authorization;
        };
        QVERIFY(bench.waitFor(AuthorizationAnswer::Failed)); // nothing is known yet
        bench.centre.queryAuthorization(tell);
        QTRY_COMPARE(told, NotificationAuthorization::NotDetermined);
        bench.post("fan", "nobody there");

        auto server = bench.startServer();
        QVERIFY(server);
        server.reset();
        QVERIFY(bench.waitFor(AuthorizationAnswer::Failed));
        bench.daemon.addService(service, QStringLiteral("/bin/false"));
        QVERIFY(bench.waitFor(AuthorizationAnswer::Granted));

        bench.daemon.stop();
        QVERIFY(bench.waitFor(AuthorizationAnswer::Failed));
        bench.post("fan", "no bus");
        bench.centre.queryAuthorization(tell);
        bench.daemon.start();
        QTRY_COMPARE(told, NotificationAuthorization::Authorized);
    }

    void form_data()
    {
        QTest::addColumn<QStringList>("capabilities");
        QTest::addColumn<Answer>("answer"); // to the question for them
        QTest::addColumn<QString>("body");
        QTest::addColumn<QString>("action");
        const QString plain = QStringLiteral("0 a < b & c");
        const QStringList rich{QStringLiteral("actions"), QStringLiteral("body-markup")};
        QTest::newRow("plain") << QStringList() << Answer::Good << plain << QString();
        QTest::newRow("rich") << rich << Answer::Good << QStringLiteral("0 a &lt; b &amp; c")
                              << QStringLiteral("default");
        QTest::newRow("error") << rich << Answer::Error << plain << QString();
        QTest::newRow("hangs") << rich << Answer::None << plain << QString();
    }
    void form()
    {
        QFETCH(const QStringList, capabilities);
        QFETCH(const Answer, answer);
        QFETCH(const QString, body);
        Bench bench(answer == Answer::None ? 300ms : BusTimeouts().reply);
        const auto server = bench.startServer(capabilities);
        QVERIFY(server);
        server->toCapabilities = answer;
        bench.post("fan", "overtaken");
        bench.post("fan", "a < b & c");
        QTRY_COMPARE(server->bodies, QStringList(body));
        QCOMPARE(server->posts[0].signature(), QStringLiteral("susssasa{sv}i"));
        const QVariantList values = server->posts[0].arguments();
        QCOMPARE(values[3].toString(), QStringLiteral("Title"));
        QTEST(values[5].toStringList().value(0), "action");
        QCOMPARE(qdbus_cast<QVariantMap>(values[6]).value(QStringLiteral("urgency")),
                 QVariant::fromValue<uchar>(1)); // servers reject other types
    }

    void replacesTheOneStillListed()
    {
        Bench bench;
        const auto server = bench.startServer();
        QVERIFY(server);
        QStringList expected;
        const auto post = [&](const char *identifier, const char *body, const char *sent) {
            bench.post(identifier, body);
            expected << QString::fromLatin1(sent);
            return QTest::qWaitFor([&] { return server->bodies == expected; });
        };
        QVERIFY(post("fan", "a", "0 a")); // 41
        QVERIFY(post("memory", "b", "0 b")); // 42
        QVERIFY(post("fan", "c", "41 c")); // 43
        announce(bench.connection, "NotificationClosed", {43U, 2U});
        click(bench.connection, 42);
        QTRY_COMPARE(bench.clicked.size(), 1); // by now it knows
        QVERIFY(post("fan", "d", "0 d")); // 44
        server->toNotify = Answer::Error;
        QVERIFY(post("fan", "e", "44 e"));
        server->toNotify = Answer::None;
        QVERIFY(post("fan", "f", "44 f")); // 46, in time
        bench.post("fan", "overtaken");
        bench.post("fan", "g");
        QVERIFY(post("memory", "h", "42 h")); // which waits for nobody else's answer
        server->answerPost(5);
        expected << QStringLiteral("46 g");
        QTRY_COMPARE(server->bodies, expected);
    }

    void waitsForNoBus()
    {
        Bench bench;
        const auto server = bench.startServer();
        QVERIFY(server);
        bench.daemon.suspend();
        const QDeadlineTimer soon(5'000);
        bench.post("fan", "a");
        const bool hasWaited = soon.hasExpired();
        bench.daemon.resume();
        QVERIFY(!hasWaited);
        QTRY_COMPARE(server->bodies, QStringList(QStringLiteral("0 a")));
    }

    void knowsClicksOnItsOwn()
    {
        Bench bench;
        const auto server = bench.startServer();
        QVERIFY(server);
        for (const char *identifier : {"fan", "memory"})
            bench.post(identifier, "body");
        QTRY_COMPARE(server->posts.size(), 2);
        const QDBusConnection stranger = bench.daemon.connectClient();
        click(stranger, 41);
        announce(stranger, "NotificationClosed", {42U, 1U});
        click(bench.connection, 41, "other");
        click(bench.connection, 40);
        announce(bench.connection, "ActionInvoked", {QStringLiteral("41")});
        click(bench.connection, 42);
        announce(bench.connection, "NotificationClosed", {42U, 2U});
        click(bench.connection, 42); // no longer ours
        click(bench.connection, 0);
        click(bench.connection, 41);
        const QStringList expected{QStringLiteral("memory"), QStringLiteral("fan")};
        QTRY_COMPARE(bench.clicked, expected);
    }

    void startsAnewWithTheNextServer()
    {
        Bench bench;
        auto server = bench.startServer();
        QVERIFY(server);
        server->toNotify = Answer::None;
        bench.post("fan", "in flight");
        QTRY_COMPARE(server->posts.size(), 1);
        server.reset();
        QVERIFY(bench.waitFor(AuthorizationAnswer::Failed));
        server = bench.startServer({});
        QVERIFY(server);
        click(bench.connection, 41); // another program's by now
        bench.post("fan", "a < b");
        QTRY_COMPARE(server->bodies, QStringList(QStringLiteral("0 a < b")));
        QCOMPARE(bench.clicked, QStringList());
    }

    void startsAServer_data()
    {
        QTest::addColumn<bool>("comes");
        QTest::addColumn<QStringList>("bodies");
        const QString last = QStringLiteral("0 last");
        QTest::newRow("comes") << true << QStringList{last, QStringLiteral("0 new")};
        QTest::newRow("does not") << false << QStringList{last};
    }
    void startsAServer()
    {
        QFETCH(const bool, comes);
        QFETCH(const QStringList, bodies);
        Bench bench;
        bench.daemon.addService(service,
                                comes ? QStringLiteral("/bin/true") : QStringLiteral("/bin/false"));
        QVERIFY(bench.waitFor(AuthorizationAnswer::Granted));
        bench.post("fan", "old");
        bench.post("fan", "new");
        if (!comes) // fails at the same time as the centre's own attempt
            bench.connection.interface()->startService(service);
        const auto server = bench.startServer();
        QVERIFY(server);
        bench.post("cpu", "last");
        QTRY_COMPARE(server->bodies.size(), bodies.size());
        server->bodies.sort();
        QCOMPARE(server->bodies, bodies);
    }
};

METERKIN_TEST(LinuxNotificationCentreTest);
#include "NotificationCentreTest.moc"
