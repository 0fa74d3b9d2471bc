#include "Services/LaunchAtLogin.h"
#include "Model/SettingsViewModel.h"
#include "Support/ScriptedServices.h"
#include "Support/ScriptedStore.h"
#include "Support/TestMain.h"

#include <QtTest>

namespace {

const QString launchAtLoginKey = QStringLiteral("launchAtLogin");

enum class Moment { Start, Toggle };

} // namespace

class LaunchAtLoginTest : public QObject {
    Q_OBJECT

private slots:
    void wishMeetsState_data();
    void wishMeetsState();
    void freshUserWithoutLoginItemKeepsTheWish();
};

void LaunchAtLoginTest::wishMeetsState_data()
{
    QTest::addColumn<Moment>("moment");
    QTest::addColumn<bool>("wish");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<bool>("works");
    QTest::addColumn<QString>("call"); // empty: none
    QTest::addColumn<bool>("storedAfter");
    QTest::addColumn<bool>("enabledAfter");

    const QString none;
    const QString on = QStringLiteral("register");
    const QString off = QStringLiteral("unregister");
    constexpr Moment Start = Moment::Start;
    constexpr Moment Toggle = Moment::Toggle;

    QTest::newRow("start, both on") << Start << true << true << false << none << true << true;
    QTest::newRow("start, both off") << Start << false << false << false << none << false << false;
    QTest::newRow("start, to register") << Start << true << false << true << on << true << true;
    QTest::newRow("start, to remove") << Start << false << true << true << off << false << false;
    QTest::newRow("start, refused") << Start << true << false << false << on << false << false;
    QTest::newRow("start, kept") << Start << false << true << false << off << true << true;

    QTest::newRow("switch on") << Toggle << true << false << true << on << true << true;
    QTest::newRow("switch off") << Toggle << false << true << true << off << false << false;
    QTest::newRow("on, refused") << Toggle << true << false << false << on << true << false;
    QTest::newRow("off, kept") << Toggle << false << true << false << off << false << true;
    QTest::newRow("on again") << Toggle << true << true << true << on << true << true;
    QTest::newRow("off again") << Toggle << false << false << true << off << false << false;
}

void LaunchAtLoginTest::wishMeetsState()
{
    QFETCH(const Moment, moment);
    QFETCH(const bool, wish);
    QFETCH(const bool, enabled);
    QFETCH(const bool, works);
    QFETCH(const QString, call);
    QFETCH(const bool, storedAfter);

    ScriptedStore store;
    store.setBoolean(launchAtLoginKey, moment == Moment::Start ? wish : !wish);
    SettingsViewModel settings(store);
    ScriptedLoginItem item;
    item.enabled = enabled;
    item.works = works;

    if (moment == Moment::Start)
        synchronizeLaunchAtLogin(settings, &item);
    else
        setLaunchAtLogin(settings, wish, &item);

    QCOMPARE(item.calls, call.isEmpty() ? QStringList() : QStringList(call));
    QTEST(item.enabled, "enabledAfter");
    QCOMPARE(store.boolean(launchAtLoginKey), storedAfter);
    QCOMPARE(settings.launchAtLogin(), storedAfter);
}

void LaunchAtLoginTest::freshUserWithoutLoginItemKeepsTheWish()
{
    ScriptedStore store;
    SettingsViewModel settings(store);
    synchronizeLaunchAtLogin(settings, nullptr);
    QVERIFY(settings.launchAtLogin());
    setLaunchAtLogin(settings, false, nullptr);
    QVERIFY(!store.boolean(launchAtLoginKey));
}

METERKIN_TEST(LaunchAtLoginTest);
#include "LaunchAtLoginTest.moc"
