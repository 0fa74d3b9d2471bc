#include "Services/LaunchAtLogin.h"
#include "Model/SettingsViewModel.h"
#include "Support/ScriptedServices.h"
#include "Support/ScriptedStore.h"
#include "Support/TestMain.h"

#include <QtTest>

class LaunchAtLoginTest : public QObject {
    Q_OBJECT

private slots:
    // The stored wish and the login item, on (1) or off (0): before, and after with what was done.
    void wishMeetsState()
    {
        constexpr char Start = '-'; // else what the user switches it to
        for (const auto &[toggle, before, works, after] : {std::tuple(Start, "11", false, "11 "),
                                                           {Start, "00", false, "00 "},
                                                           {Start, "10", true, "11 register"},
                                                           {Start, "01", true, "00 unregister"},
                                                           {Start, "10", false, "00 register"},
                                                           {Start, "01", false, "11 unregister"},
                                                           {'1', "00", false, "10 register"},
                                                           {'0', "11", false, "01 unregister"},
                                                           {'1', "01", true, "11 register"}}) {
            ScriptedStore store;
            store.setBoolean(QStringLiteral("launchAtLogin"), before[0] == '1');
            SettingsViewModel settings(store);
            ScriptedLoginItem item;
            item.enabled = before[1] == '1';
            item.works = works;
            if (toggle == Start)
                synchronizeLaunchAtLogin(settings, item);
            else
                setLaunchAtLogin(settings, toggle == '1', item);
            const bool stored = store.boolean(QStringLiteral("launchAtLogin"));
            QCOMPARE(settings.launchAtLogin(), stored);
            QCOMPARE(QString::asprintf("%d%d ", stored, item.enabled) + item.calls.join(u'|'),
                     QString::fromLatin1(after));
        }
    }
};

METERKIN_TEST(LaunchAtLoginTest);
#include "LaunchAtLoginTest.moc"
