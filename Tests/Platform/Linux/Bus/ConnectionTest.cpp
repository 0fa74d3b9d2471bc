#include "Platform/Linux/Bus/Connection.h"
#include "Support/PrivateBus.h"
#include "Support/TestMain.h"

#include <QSignalSpy>
#include <QtTest>

#include <list>

namespace {

using namespace std::chrono_literals;

constexpr BusTimeouts Short{.handshake = 500ms, .firstRetry = 10ms, .longestRetry = 100ms};

} // namespace

class BusConnectionTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { m_runtimeFolder = qgetenv("XDG_RUNTIME_DIR"); }
    void cleanup() { qputenv("XDG_RUNTIME_DIR", m_runtimeFolder); }

    void findsTheSocketInTheRuntimeFolder()
    {
        PrivateBus daemon;
        qputenv("XDG_RUNTIME_DIR", daemon.address().section(u'=', 1).chopped(4).toUtf8());
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        BusConnection bus;
        QVERIFY2(!bus.connection(), "connecting has waited for the bus");
        QTRY_VERIFY(bus.connection());
    }

    void survivesWithoutABus()
    {
        PrivateBus daemon;
        daemon.stop();
        qputenv("XDG_RUNTIME_DIR", "/nonexistent");
        std::list<BusConnection> buses;
        int errors = 0;
        for (const char *address : {"", "autolaunch:", "unix:path=/nonexistent/bus", "]:;=,%zz"}) {
            qputenv("DBUS_SESSION_BUS_ADDRESS", address);
            buses.emplace_back(BusConnection::Kind::Session, Short)
                .call<void>(m_call, this, [&errors](const BusReply<void> &reply) {
                    errors += reply.isValid() ? 0 : 1;
                });
        }
        QTRY_COMPARE(errors, 4);

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

        int answers = 0;
        const auto count = [&answers](const BusReply<void> &) { ++answers; };
        auto gone = std::make_unique<QObject>();
        bus.call<void>(m_call, gone.get(), count);
        gone.reset();
        bus.call<void>(m_call, this, count);
        QTRY_COMPARE(answers, 1);

        bus.call<void>(m_call, this, count);
        daemon.stop();
        QTRY_COMPARE(lost.size(), 1);
        QVERIFY(!bus.connection());
        QTRY_COMPARE(answers, 2);
        daemon.start();
        QTRY_VERIFY(bus.connection());
    }

private:
    QByteArray m_runtimeFolder;
    const QDBusMessage m_call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId"));
};

METERKIN_TEST(BusConnectionTest);
#include "ConnectionTest.moc"
