#include "Platform/Linux/Bus/Connection.h"
#include "Support/PrivateBus.h"
#include "Support/TestMain.h"

#include <QSignalSpy>
#include <QtTest>

#include <list>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

class BusConnectionTest : public QObject {
    Q_OBJECT

private slots:
    void findsTheBus()
    {
        const QByteArray folder = qgetenv("XDG_RUNTIME_DIR");
        PrivateBus daemon;
        const QByteArray socket = daemon.address().section(u'=', 1).toUtf8();
        qputenv("XDG_RUNTIME_DIR", socket.chopped(4));
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        QCOMPARE(BusConnection::address(BusConnection::Kind::Session), daemon.address());
        qputenv("XDG_RUNTIME_DIR", folder);
        daemon.stop();
        std::list<BusConnection> buses;
        for (const char *address : {"autolaunch:", "unix:path=/nonexistent/bus", "]:;=,%zz"}) {
            qputenv("DBUS_SESSION_BUS_ADDRESS", address);
            buses.emplace_back(BusConnection::Kind::Session, Short);
        }
        bool hasFailed = false;
        buses.front().call<void>(m_call, this,
                                 [&](const auto &reply) { hasFailed = !reply.isValid(); });
        QTRY_VERIFY(hasFailed);
        daemon.start();
        qputenv("DBUS_SESSION_BUS_ADDRESS", daemon.address().toUtf8());
        for (const BusConnection &bus : buses)
            QTRY_VERIFY(bus.connection());
    }

    void isNotHeldUpByASilentBus()
    {
        PrivateBus silent;
        silent.suspend();
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", silent.address().toUtf8());
        BusConnection system(BusConnection::Kind::System, Short);
        QTest::qWait((Short.handshake / 2).count());

        PrivateBus daemon;
        const BusConnection session;
        QTRY_VERIFY(session.connection());
        QVERIFY(!system.connection());

        silent.resume();
        QTRY_VERIFY(system.connection()); // it has not given up
        qunsetenv("DBUS_SYSTEM_BUS_ADDRESS");
    }

    void answersEachCallOnce()
    {
        PrivateBus daemon;
        BusConnection bus(BusConnection::Kind::Session, Short);
        QSignalSpy lost(&bus, &BusConnection::disconnected);
        QTRY_VERIFY(bus.connection());

        QStringList replies;
        const auto record = [&replies](const auto &reply) {
            replies << (reply.isTimeout() ? u"timeout"_s : reply.error().name());
        };
        auto gone = std::make_unique<QObject>();
        bus.call<QString>(m_call, gone.get(), record);
        gone.reset();
        bus.call<QString>(m_call, this, record);
        bus.call<uint>(m_call, this, record);
        QTRY_COMPARE(replies.size(), 2);
        daemon.suspend();
        bus.call<QString>(m_call, this, record, 50ms);
        QTRY_COMPARE(replies.size(), 3);
        QCOMPARE(replies.join(u' '), u" org.freedesktop.DBus.Error.InvalidSignature timeout"_s);

        bus.call<QString>(m_call, this, record);
        daemon.stop();
        QTRY_COMPARE(lost.size(), 1);
        QVERIFY(!bus.connection());
        QTRY_COMPARE(replies.size(), 4);
        daemon.start();
        QTRY_VERIFY(bus.connection());
    }

private:
    static constexpr BusTimeouts Short{
        .handshake = 500ms, .firstRetry = 10ms, .longestRetry = 100ms};
    const QDBusMessage m_call = BusConnection::busCall(u"GetId"_s);
};

METERKIN_TEST(BusConnectionTest);
#include "ConnectionTest.moc"
