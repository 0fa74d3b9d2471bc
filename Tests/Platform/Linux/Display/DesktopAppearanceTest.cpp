#include "Platform/Linux/Display/DesktopAppearance.h"
#include "Support/PrivateBus.h"
#include "Support/ScriptedService.h"
#include "Support/TestMain.h"

#include <QSignalSpy>
#include <QtTest>

#include <limits>
#include <tuple>

using namespace Qt::StringLiterals;

static const QString service = u"org.freedesktop.portal.Desktop"_s;
static const QString path = u"/org/freedesktop/portal/desktop"_s;
static const QString scheme = u"color-scheme"_s;
static const QString motion = u"reduced-motion"_s;
static const QString textScale = u"text-scaling-factor"_s;
static const QString animations = u"enable-animations"_s;

/// A desktop portal; settings that are missing are 0.
struct SettingsPortal : ScriptedService {
    QMap<QString, QVariant> settings;
    using ScriptedService::ScriptedService;

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &) override
    {
        const QDBusVariant inner(settings.value(message.arguments().value(1).toString(), 0U));
        return connection.send(
            message.createReply(QVariant::fromValue(QDBusVariant(QVariant::fromValue(inner)))));
    }
};

class LinuxDesktopAppearanceTest : public QObject {
    Q_OBJECT

private slots:
    void knowsDarkThemes()
    {
        for (const QString &name : {u"ARC-DARK"_s, u"Breeze Dark"_s, u"DarkMint"_s})
            QVERIFY2(isDarkThemeName(name), qPrintable(name));
        for (const QString &name : {u""_s, u"Darkness"_s, u"Endarken"_s, u"DARKNESS"_s})
            QVERIFY2(!isDarkThemeName(name), qPrintable(name));
    }

    void followsThePortal()
    {
        PrivateBus daemon;
        BusConnection bus;
        QTRY_VERIFY(bus.connection());
        LinuxDesktopAppearance appearance(bus, LinuxDesktopAppearance::TextScale::FromPortal);
        QVERIFY(!appearance.isDark()); // no portal yet
        SettingsPortal portal(daemon.connectClient(), service, path);
        portal.settings = {{scheme, 1U}, {textScale, 1.25}, {motion, 1U}, {animations, true}};
        QTRY_COMPARE(appearance.textScale(), 1.25);
        QVERIFY(appearance.isDark() && appearance.reducesMotion());

        QSignalSpy changes(&appearance, &DesktopAppearance::changed);
        // The theme's name decides only where the portal has no preference.
        for (const auto &[told, theme, isDark] : {std::tuple(QVariant(2U), u"Arc-Dark"_s, false),
                                                  {1U, u"Arc"_s, true},
                                                  {0U, u"Arc-Dark"_s, true},
                                                  {u"dark"_s, {}, false},
                                                  {1U, {}, true}}) {
            appearance.setThemeName(theme);
            portal.settings[scheme] = told;
            portal.emitSignal(
                portal.connection, path, u"org.freedesktop.portal.Settings"_s, u"SettingChanged"_s,
                {u"org.freedesktop.appearance"_s, scheme, QVariant::fromValue(QDBusVariant(told))});
            QTRY_COMPARE(appearance.isDark(), isDark);
        }
        QCOMPARE(changes.size(), 4);

        SettingsPortal next(daemon.connectClient(), service, path);
        next.settings = {{textScale, std::numeric_limits<double>::quiet_NaN()}, {animations, true}};
        QTRY_VERIFY(!appearance.isDark() && !appearance.reducesMotion());
        QTRY_COMPARE(appearance.textScale(), 1.0);

        daemon.stop();
        daemon.start();
        SettingsPortal late(daemon.connectClient(), service, path);
        late.settings = {{scheme, 1U}, {animations, false}};
        QTRY_VERIFY_WITH_TIMEOUT(appearance.isDark() && appearance.reducesMotion(), 20'000);
    }
};

METERKIN_TEST(LinuxDesktopAppearanceTest);
#include "DesktopAppearanceTest.moc"
