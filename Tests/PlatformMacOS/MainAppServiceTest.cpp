#include "Platform/macOS/MainAppService.h"
#include "Fakes/CallLog.h"
#include "Fakes/FakeMainAppService.h"
#include "Model/SettingsViewModel.h"
#include "Services/LaunchAtLogin.h"
#include "Support/ScriptedStore.h"
#include "Support/TestMain.h"

#include <QtTest>

class MainAppServiceTest : public QObject {
    Q_OBJECT

private slots:
    void followsTheWishAtTheStart_data()
    {
        QTest::addColumn<bool>("wish");
        QTest::addColumn<int>("status");
        QTest::addColumn<bool>("works");
        QTest::addColumn<QString>("calls");
        QTest::addColumn<bool>("stored");
        QTest::newRow("both on") << true << 1 << true << QStringLiteral("") << true;
        QTest::newRow("both off") << false << 0 << true << QStringLiteral("") << false;
        QTest::newRow("wanted") << true << 0 << true << QStringLiteral("register") << true;
        QTest::newRow("refused by the user")
            << true << 2 << false << QStringLiteral("register") << false;
        QTest::newRow("unknown to the system")
            << true << 3 << false << QStringLiteral("register") << false;
        QTest::newRow("unwanted") << false << 1 << true << QStringLiteral("unregister") << false;
        QTest::newRow("unwanted, stays")
            << false << 1 << false << QStringLiteral("unregister") << true;
    }
    void followsTheWishAtTheStart()
    {
        QFETCH(const bool, wish);
        QFETCH(const int, status);
        QFETCH(const bool, works);
        ScriptedStore store;
        store.setBoolean(QStringLiteral("launchAtLogin"), wish);
        SettingsViewModel settings(store);
        FakeMainAppService::status = status;
        FakeMainAppService::works = works;
        CallLog::take();
        MainAppService service;
        synchronizeLaunchAtLogin(settings, service);
        QTEST(CallLog::take().join(u'|'), "calls");
        QTEST(store.boolean(QStringLiteral("launchAtLogin")), "stored");
    }
};

METERKIN_TEST(MainAppServiceTest);
#include "MainAppServiceTest.moc"
