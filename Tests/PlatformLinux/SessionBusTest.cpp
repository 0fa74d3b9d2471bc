#include "Platform/Linux/SessionBus.h"
#include "Support/PrivateBus.h"
#include "Support/TestMain.h"

#include <QSignalSpy>
#include <QtTest>

class SessionBusTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { m_runtimeFolder = qgetenv("XDG_RUNTIME_DIR"); }
    void cleanup() { qputenv("XDG_RUNTIME_DIR", m_runtimeFolder); }

    void findsTheBus_data()
    {
        QTest::addColumn<bool>("byAddress");
        QTest::newRow("address in the environment") << true;
        QTest::newRow("socket in the runtime folder") << false;
    }

    void findsTheBus()
    {
        QFETCH(bool, byAddress);
        PrivateBus daemon;
        QVERIFY(daemon.start());
        if (!byAddress) {
            qputenv("XDG_RUNTIME_DIR", daemon.address().section(u'=', 1).chopped(4).toUtf8());
            qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        }
        SessionBus bus;
        QVERIFY2(!bus.connection(), "connecting has waited for the bus");
        QTRY_VERIFY(bus.connection());
        QVERIFY(bus.connection()->isConnected());
    }

    void survivesWithoutABus_data()
    {
        QTest::addColumn<QByteArray>("address");
        QTest::newRow("no address") << QByteArray();
        QTest::newRow("a bus to be started") << QByteArray("autolaunch:");
        QTest::newRow("nobody listens") << QByteArray("unix:path=/nonexistent/bus");
        QTest::newRow("not an address") << QByteArray("]:;=,%zz");
    }

    void survivesWithoutABus()
    {
        QFETCH(QByteArray, address);
        PrivateBus daemon;
        const QByteArray good = qgetenv("DBUS_SESSION_BUS_ADDRESS");
        qputenv("XDG_RUNTIME_DIR", "/nonexistent");
        qputenv("DBUS_SESSION_BUS_ADDRESS", address);
        SessionBus bus;

        QDBusMessage answer;
        bus.call(QDBusMessage::createMethodCall(QStringLiteral("a.b"), QStringLiteral("/"),
                                                QStringLiteral("a.b"), QStringLiteral("C")),
                 this, [&answer](const QDBusMessage &reply) { answer = reply; });
        QTRY_COMPARE(answer.type(), QDBusMessage::ErrorMessage);
        QVERIFY(!bus.connection());

        QVERIFY(daemon.start());
        qputenv("DBUS_SESSION_BUS_ADDRESS", good);
        QTRY_VERIFY_WITH_TIMEOUT(bus.connection(), 20'000);
    }

    void comesBackWithTheBus()
    {
        PrivateBus daemon;
        QVERIFY(daemon.start());
        SessionBus bus;
        QSignalSpy lost(&bus, &SessionBus::disconnected);
        QTRY_VERIFY(bus.connection());

        int answers = 0;
        QDBusMessage call = QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId"));
        for (int round = 1; round <= 2; ++round) {
            bus.call(call, this, [&answers](const QDBusMessage &) { ++answers; });
            daemon.stop();
            QTRY_COMPARE(lost.size(), round);
            QVERIFY(!bus.connection());
            QTRY_COMPARE(answers, round);
            QVERIFY(daemon.start());
            QTRY_VERIFY_WITH_TIMEOUT(bus.connection(), 20'000);
        }
    }

    void dropsTheAnswerOfOneGone()
    {
        PrivateBus daemon;
        QVERIFY(daemon.start());
        SessionBus bus;
        QTRY_VERIFY(bus.connection());
        QDBusMessage call = QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId"));
        bool late = false;
        auto receiver = std::make_unique<QObject>();
        bus.call(call, receiver.get(), [&late](const QDBusMessage &) { late = true; });
        receiver.reset();
        bool answered = false;
        bus.call(call, this, [&answered](const QDBusMessage &) { answered = true; });
        QTRY_VERIFY(answered);
        QVERIFY(!late);
    }

private:
    QByteArray m_runtimeFolder;
};

METERKIN_TEST(SessionBusTest);
#include "SessionBusTest.moc"
