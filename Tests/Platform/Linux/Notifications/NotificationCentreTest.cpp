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
class ScriptedServer : public ScriptedService {
public:
    ScriptedServer(const QDBusConnection &bus, const QStringList &capabilities)
        : ScriptedService(bus, service, serverPath)
        , m_capabilities(capabilities)
    {
    }

    Answer toCapabilities = Answer::Good;
    Answer toNotify = Answer::Good;
    QList<QDBusMessage> posts;
    QStringList bodies; ///< of the posts, each after the number that it replaces

    void answerPost(qsizetype post)
    {
        connection.send(posts[post].createReply(41U + static_cast<uint>(post)));
    }
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
            answerPost(posts.size() - 1);
        else if (answer == Answer::Good)
            connection.send(message.createReply(m_capabilities));
        return true;
    }

private:
    const QStringList m_capabilities;
};

} // namespace

class LinuxNotificationCentreTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_daemon = std::make_unique<PrivateBus>();
        m_client = m_daemon->connectClient();
        m_bus = std::make_unique<BusConnection>(BusConnection::Kind::Session,
                                                BusTimeouts{.reply = 1s, .firstRetry = 100ms});
        m_centre = std::make_unique<LinuxNotificationCentre>(*m_bus);
        connect(m_centre.get(), &NotificationCentre::clicked, this,
                [this](const QString &identifier) { m_clicked << identifier; });
    }
    void cleanup()
    {
        m_server.reset();
        m_centre.reset();
        m_bus.reset();
        m_daemon.reset();
        m_clicked.clear();
    }

    void answersAboutAuthorization()
    {
        std::optional<NotificationAuthorization> told;
        const auto tell = [&told](NotificationAuthorization answer) { told = answer; };
        QVERIFY(waitFor(AuthorizationAnswer::Failed)); // nothing is known yet
        m_centre->queryAuthorization(tell);
        QTRY_COMPARE(told, NotificationAuthorization::NotDetermined);
        post("fan", "no server");
        QVERIFY(startServer());
        m_server.reset();
        QVERIFY(waitFor(AuthorizationAnswer::Failed));
        m_daemon->addService(service, u"/bin/true"_s);
        QVERIFY(waitFor(AuthorizationAnswer::Granted));
        post("fan", "old");
        post("fan", "new");
        QVERIFY(startServer());
        QVERIFY(hasPosted({"0 new"}));

        m_daemon->stop();
        QVERIFY(waitFor(AuthorizationAnswer::Failed));
        post("fan", "no bus");
        m_centre->queryAuthorization(tell);
        m_daemon->start();
        QTRY_COMPARE(told, NotificationAuthorization::Authorized);
    }

    void suitsTheServer()
    {
        const struct {
            QStringList capabilities;
            Answer toCapabilities;
        } rows[]{
            {{}, Answer::Good}, {rich, Answer::Good}, {rich, Answer::Error}, {rich, Answer::None}};
        for (const auto &[capabilities, toCapabilities] : rows) {
            cleanup();
            init();
            QVERIFY(startServer(capabilities));
            m_server->toCapabilities = toCapabilities;
            post("fan", "overtaken");
            post("fan", "a < b & c");
            const bool isRich = capabilities == rich && toCapabilities == Answer::Good;
            QVERIFY(hasPosted({isRich ? "0 a &lt; b &amp; c" : "0 a < b & c"}));
            QCOMPARE(m_server->posts[0].signature(), u"susssasa{sv}i"_s);
            const QVariantList values = m_server->posts[0].arguments();
            QCOMPARE(values[5].toStringList().contains(u"default"), isRich);
            QCOMPARE(qdbus_cast<QVariantMap>(values[6]).value(u"urgency"_s),
                     QVariant::fromValue<uchar>(1)); // servers reject other types
        }
    }

    void replacesTheOneStillListed()
    {
        QVERIFY(startServer());
        post("fan", "a"); // 41
        QVERIFY(hasPosted({"0 a"}));
        post("memory", "b"); // 42
        post("fan", "c"); // 43
        QVERIFY(hasPosted({"0 a", "0 b", "41 c"}));
        emitSignal(m_client, "NotificationClosed", {43U, 2U});
        click(m_client, 42);
        QTRY_COMPARE(m_clicked.size(), 1); // by now it knows
        m_server->bodies.clear();
        post("fan", "d"); // 44
        QVERIFY(hasPosted({"0 d"}));
        m_server->toNotify = Answer::Error;
        post("fan", "e");
        QVERIFY(hasPosted({"0 d", "44 e"}));
        m_server->toNotify = Answer::None;
        post("fan", "f"); // 46, answered below
        QVERIFY(hasPosted({"0 d", "44 e", "44 f"}));
        post("fan", "overtaken");
        post("fan", "g");
        post("memory", "h"); // which waits for no other reply
        QVERIFY(hasPosted({"0 d", "44 e", "44 f", "42 h"}));
        m_server->answerPost(5);
        QVERIFY(hasPosted({"0 d", "44 e", "44 f", "42 h", "46 g"}));
    }

    void knowsClicksOnItsOwn()
    {
        QVERIFY(startServer());
        post("fan", "body");
        QVERIFY(hasPosted({"0 body"}));
        const QDBusConnection stranger = m_daemon->connectClient();
        click(stranger, 41);
        emitSignal(stranger, "NotificationClosed", {41U, 1U});
        click(m_client, 41, "other");
        click(m_client, 40);
        emitSignal(m_client, "ActionInvoked", {u"41"_s});
        click(m_client, 41);
        emitSignal(m_client, "NotificationClosed", {41U, 2U});
        click(m_client, 41);
        click(m_client, 0);
        QTRY_COMPARE(m_clicked, QStringList(u"fan"_s));

        post("fan", "42");
        m_server.reset();
        QVERIFY(waitFor(AuthorizationAnswer::Failed));
        QVERIFY(startServer());
        click(m_client, 42); // another program's by now
        post("fan", "a");
        QVERIFY(hasPosted({"0 a"}));
        QCOMPARE(m_clicked.size(), 1);
    }

private:
    bool startServer(const QStringList &capabilities = rich)
    {
        m_server = std::make_unique<ScriptedServer>(m_client, capabilities);
        return waitFor(AuthorizationAnswer::Granted);
    }
    /// Waits until the centre gives that answer, and checks that each comes later.
    bool waitFor(AuthorizationAnswer wanted)
    {
        return QTest::qWaitFor([this, wanted] {
            AuthorizationAnswer told = AuthorizationAnswer::Refused; // which it never says
            m_centre->requestAuthorization([&told](AuthorizationAnswer answer) { told = answer; });
            const bool isLater = told == AuthorizationAnswer::Refused;
            QCoreApplication::processEvents();
            return isLater && told == wanted;
        });
    }
    void post(const char *identifier, const char *body)
    {
        m_centre->post({QString::fromLatin1(identifier), u"Title"_s, QString::fromLatin1(body)});
    }
    bool hasPosted(std::initializer_list<const char *> bodies)
    {
        QStringList expected;
        for (const char *body : bodies)
            expected << QString::fromLatin1(body);
        return QTest::qWaitFor([&] { return m_server->bodies == expected; });
    }
    /// Returns when the bus has passed it on.
    static void emitSignal(const QDBusConnection &sender, const char *name,
                           const QVariantList &arguments)
    {
        QDBusMessage signal =
            QDBusMessage::createSignal(serverPath, service, QString::fromLatin1(name));
        signal.setArguments(arguments);
        sender.send(signal);
        sender.interface()->isServiceRegistered(service);
    }
    static void click(const QDBusConnection &sender, uint number, const char *action = "default")
    {
        emitSignal(sender, "ActionInvoked", {number, QString::fromLatin1(action)});
    }

    std::unique_ptr<PrivateBus> m_daemon;
    QDBusConnection m_client{QString()};
    std::unique_ptr<BusConnection> m_bus;
    std::unique_ptr<LinuxNotificationCentre> m_centre;
    std::unique_ptr<ScriptedServer> m_server;
    QStringList m_clicked;
};

METERKIN_TEST(LinuxNotificationCentreTest);
#include "NotificationCentreTest.moc"
