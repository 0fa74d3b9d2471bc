#include "Platform/Linux/LinuxAppearance.h"
#include "Support/PrivateBus.h"
#include "Support/TestMain.h"

#include <QDBusVirtualObject>
#include <QSignalSpy>
#include <QtTest>

#include <limits>

namespace {

const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString portalName = QStringLiteral("org.freedesktop.portal.Desktop");
const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");

/// A desktop portal whose settings the test sets.
class ScriptedPortal : public QDBusVirtualObject {
public:
    explicit ScriptedPortal(const QDBusConnection &connection)
        : m_connection(connection)
    {
        m_connection.registerVirtualObject(portalPath, this);
        m_connection.registerService(portalName);
    }
    ~ScriptedPortal() override { m_connection.unregisterService(portalName); }

    QVariant colorScheme = 0U;
    QVariant textScale = 1.0;

    void announceScheme(const QVariant &value)
    {
        QDBusMessage signal = QDBusMessage::createSignal(
            portalPath, QStringLiteral("org.freedesktop.portal.Settings"),
            QStringLiteral("SettingChanged"));
        signal << appearanceGroup << QStringLiteral("color-scheme")
               << QVariant::fromValue(QDBusVariant(value));
        m_connection.send(signal);
    }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        const QVariant &value =
            message.arguments().value(0) == appearanceGroup ? colorScheme : textScale;
        const QDBusVariant inner(value);
        return connection.send(
            message.createReply(QVariant::fromValue(QDBusVariant(QVariant::fromValue(inner)))));
    }
    QString introspect(const QString &) const override { return QString(); }

private:
    QDBusConnection m_connection;
};

} // namespace

class LinuxAppearanceTest : public QObject {
    Q_OBJECT

private slots:
    void knowsDarkThemes()
    {
        for (const char *name :
             {"Adwaita-dark", "ARC-DARK", "Breeze Dark", "BreezeDark", "DarkMint"})
            QVERIFY2(isDarkThemeName(QString::fromUtf8(name)), name);
        for (const char *name : {"", "Adwaita", "Darkness", "Arc-Darker", "Endarken", "DARKNESS"})
            QVERIFY2(!isDarkThemeName(QString::fromUtf8(name)), name);
    }

    void followsThePortal()
    {
        PrivateBus daemon;
        MessageBus bus;
        QTRY_VERIFY(bus.connection());
        LinuxAppearance appearance(bus, LinuxAppearance::TextScale::FromPortal);
        QVERIFY(!appearance.isDark()); // nobody there yet

        auto portal = std::make_unique<ScriptedPortal>(daemon.connectClient());
        portal->colorScheme = 1U;
        portal->textScale = 1.25;
        QTRY_VERIFY(appearance.isDark());
        QTRY_COMPARE(appearance.textScale(), 1.25);

        QSignalSpy changes(&appearance, &DesktopAppearance::changed);
        for (const QVariant &nonsense : {QVariant(2U), QVariant(QStringLiteral("dark"))}) {
            portal->announceScheme(nonsense);
            QTRY_VERIFY(!appearance.isDark());
            portal->announceScheme(1U);
            QTRY_VERIFY(appearance.isDark());
        }
        QCOMPARE(changes.size(), 4);

        appearance.setThemeName(u"Arc");
        QVERIFY(appearance.isDark());
        portal->announceScheme(2U);
        QTRY_VERIFY(!appearance.isDark());
        appearance.setThemeName(u"Arc-Dark");
        QVERIFY(!appearance.isDark());
        portal->announceScheme(0U);
        QTRY_VERIFY(appearance.isDark());
        appearance.setThemeName(u"");
        QVERIFY(!appearance.isDark());
        QCOMPARE(changes.size(), 7);

        portal.reset(); // as it was, until a new one says otherwise
        portal = std::make_unique<ScriptedPortal>(daemon.connectClient());
        portal->textScale = std::numeric_limits<double>::quiet_NaN();
        QTRY_VERIFY(!appearance.isDark());
        QTRY_COMPARE(appearance.textScale(), 1.0);

        daemon.stop();
        daemon.start();
        ScriptedPortal late(daemon.connectClient());
        late.colorScheme = 1U;
        QTRY_VERIFY_WITH_TIMEOUT(appearance.isDark(), 20'000);
    }
};

METERKIN_TEST(LinuxAppearanceTest);
#include "LinuxAppearanceTest.moc"
