#include "Platform/Linux/Windows/DesktopAppearance.h"
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
const QString scheme = QStringLiteral("color-scheme");
const QString motion = QStringLiteral("reduced-motion");
const QString textScale = QStringLiteral("text-scaling-factor");
const QString animations = QStringLiteral("enable-animations");

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

    QMap<QString, QVariant> settings;

    void announceScheme(const QVariant &value)
    {
        QDBusMessage signal = QDBusMessage::createSignal(
            portalPath, QStringLiteral("org.freedesktop.portal.Settings"),
            QStringLiteral("SettingChanged"));
        signal << appearanceGroup << scheme << QVariant::fromValue(QDBusVariant(value));
        m_connection.send(signal);
    }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        const QDBusVariant inner(settings.value(message.arguments().value(1).toString(), 0U));
        return connection.send(
            message.createReply(QVariant::fromValue(QDBusVariant(QVariant::fromValue(inner)))));
    }
    QString introspect(const QString &) const override { return QString(); }

private:
    QDBusConnection m_connection;
};

} // namespace

class LinuxDesktopAppearanceTest : public QObject {
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
        BusConnection bus;
        QTRY_VERIFY(bus.connection());
        LinuxDesktopAppearance appearance(bus, LinuxDesktopAppearance::TextScale::FromPortal);
        QVERIFY(!appearance.isDark()); // nobody there yet

        auto portal = std::make_unique<ScriptedPortal>(daemon.connectClient());
        portal->settings = {{scheme, 1U}, {textScale, 1.25}, {motion, 1U}, {animations, true}};
        QTRY_COMPARE(appearance.textScale(), 1.25);
        QVERIFY(appearance.isDark() && appearance.reducesMotion());

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
        portal->settings[textScale] = std::numeric_limits<double>::quiet_NaN();
        portal->settings[animations] = true;
        QTRY_VERIFY(!appearance.isDark() && !appearance.reducesMotion());
        QTRY_COMPARE(appearance.textScale(), 1.0);

        daemon.stop();
        daemon.start();
        ScriptedPortal late(daemon.connectClient());
        late.settings = {{scheme, 1U}, {animations, false}};
        QTRY_VERIFY_WITH_TIMEOUT(appearance.isDark() && appearance.reducesMotion(), 20'000);
    }
};

METERKIN_TEST(LinuxDesktopAppearanceTest);
#include "DesktopAppearanceTest.moc"
