#include "Platform/macOS/LocalKeyMonitor.h"

#include "Fakes/CallLog.h"
#import "Fakes/FakeEvents.h"
#include "Model/SettingsViewModel.h"
#include "Services/HotkeyRecorder.h"
#include "Support/ScriptedServices.h"
#include "Support/ScriptedStore.h"
#include "Support/TestMain.h"

#include <QtTest>

class LocalKeyMonitorTest : public QObject {
    Q_OBJECT

private slots:
    void recordsOneKey_data()
    {
        QTest::addColumn<ushort>("keyCode");
        QTest::addColumn<quint32>("flags");
        QTest::addColumn<QString>("stored"); // empty: passed on
        QTest::newRow("shift") << ushort(40) << 0x20102U << QString();
        QTest::newRow("command, caps lock")
            << ushort(122) << 0x910108U << QStringLiteral("122 256 ");
    }
    void recordsOneKey()
    {
        QFETCH(const ushort, keyCode);
        QFETCH(const quint32, flags);
        QFETCH(const QString, stored);
        ScriptedStore store;
        SettingsViewModel settings(store);
        LocalKeyMonitor monitor;
        CallLog::take();
        {
            ScriptedHotkeyRegistrar registrar;
            HotkeyRecorder recorder(settings, {monitor, registrar});
            QVERIFY(!FakeEvents::swallows(keyCode, flags)); // not recording yet
            recorder.record();
            QCOMPARE(FakeEvents::swallows(keyCode, flags), !stored.isEmpty());
            QVERIFY(!FakeEvents::swallows(255, flags));
            QCOMPARE(recorder.isRecording(), stored.isEmpty());
        }
        QString written;
        for (const ScriptedStore::Write &write : store.writes)
            written += write.value.toString() + u' ';
        QCOMPARE(written, stored);
        QCOMPARE(CallLog::take(),
                 QStringList(
                     {QStringLiteral("addLocalMonitor 1024"), QStringLiteral("removeMonitor 1")}));
    }

    void isAloneAndEndsWithItsOwner()
    {
        {
            LocalKeyMonitor monitor;
            monitor.install([](const KeyDown &) { return true; });
            monitor.install([](const KeyDown &) { return false; });
            QVERIFY(!FakeEvents::swallows(1, 0));
        }
        QCOMPARE(CallLog::take().count(QStringLiteral("removeMonitor 1")), 2);
    }

    void outlivesItsRemoval()
    {
        LocalKeyMonitor monitor;
        const auto text = std::make_shared<QString>(QStringLiteral("kept"));
        QString seen;
        monitor.install([&monitor, &seen, text](const KeyDown &) {
            monitor.remove();
            seen = *text;
            return true;
        });
        QVERIFY(FakeEvents::swallows(1, 0));
        QCOMPARE(seen, *text);
        QCOMPARE(text.use_count(), 1);
    }
};

METERKIN_TEST(LocalKeyMonitorTest);
#include "LocalKeyMonitorTest.moc"
