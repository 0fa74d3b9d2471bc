#include "Services/LaunchAtLogin.h"
#include "Model/SettingsViewModel.h"
#include "Support/ScriptedServices.h"
#include "Support/ScriptedStore.h"
#include "Support/TestMain.h"

#include <QtTest>

class LaunchAtLoginTest : public QObject {
    Q_OBJECT

private slots:
    // Before and after: the stored wish and the login item, as they are on (1) or off (0).
    void wishMeetsState_data()
    {
        QTest::addColumn<QString>("toggle"); // to what the user switches it; empty: at the start
        QTest::addColumn<QString>("before");
        QTest::addColumn<bool>("works");
        QTest::addColumn<QString>("after");
        const auto row = [](const char *toggle, const char *before, bool works, const char *after) {
            QTest::addRow("%s %s %d", toggle, before, works)
                << QString::fromLatin1(toggle) << QString::fromLatin1(before) << works
                << QString::fromLatin1(after);
        };
        row("", "11", false, "11 ");
        row("", "00", false, "00 ");
        row("", "10", true, "11 register");
        row("", "01", true, "00 unregister");
        row("", "10", false, "00 register");
        row("", "01", false, "11 unregister");
        row("1", "00", false, "10 register");
        row("0", "11", false, "01 unregister");
        row("1", "01", true, "11 register");
    }
    void wishMeetsState()
    {
        QFETCH(const QString, toggle);
        QFETCH(const QString, before);
        QFETCH(const bool, works);
        ScriptedStore store;
        store.setBoolean(QStringLiteral("launchAtLogin"), before[0] == u'1');
        SettingsViewModel settings(store);
        ScriptedLoginItem item;
        item.enabled = before[1] == u'1';
        item.works = works;
        if (toggle.isEmpty())
            synchronizeLaunchAtLogin(settings, item);
        else
            setLaunchAtLogin(settings, toggle == u"1", item);
        const bool stored = store.boolean(QStringLiteral("launchAtLogin"));
        QCOMPARE(settings.launchAtLogin(), stored);
        QTEST(QStringLiteral("%1%2 %3").arg(stored).arg(item.enabled).arg(item.calls.join(u'|')),
              "after");
    }
};

METERKIN_TEST(LaunchAtLoginTest);
#include "LaunchAtLoginTest.moc"
