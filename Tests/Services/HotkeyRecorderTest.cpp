#include "Services/HotkeyRecorder.h"

#include "Model/SettingsViewModel.h"
#include "Platform/KeyDownMonitor.h"
#include "Support/ScriptedStore.h"
#include "Support/TestMain.h"

#include <QtTest>

namespace {

struct ScriptedMonitor : KeyDownMonitor {
    std::function<bool(const KeyDown &)> handler;

    void install(std::function<bool(const KeyDown &)> added) override { handler = added; }
    void remove() override { handler = nullptr; }
};

} // namespace

class HotkeyRecorderTest : public QObject {
    Q_OBJECT

private slots:
    void captures_data()
    {
        QTest::addColumn<quint32>("keyCode");
        QTest::addColumn<quint32>("flags");
        QTest::addColumn<QString>("stored"); // empty: passed on
        QTest::newRow("shift") << 40U << 0x20000U << QString();
        QTest::newRow("locks alone") << 40U << 0xFFE1FFFFU << QString();
        QTest::newRow("Esc alone") << 53U << 0U << QString();
        QTest::newRow("no key code") << 255U << 0x100000U << QString();
        QTest::newRow("control") << 40U << 0x40000U << QStringLiteral("40 4096 ^K");
        QTest::newRow("option") << 53U << 0x80000U << QStringLiteral("53 2048 ⌥Esc");
        QTest::newRow("command, caps lock") << 122U << 0x110000U << QStringLiteral("122 256 ⌘F1");
        QTest::newRow("key code 0") << 0U << 0x120000U << QStringLiteral("0 768 ⇧⌘A");
    }
    void captures()
    {
        QFETCH(const quint32, keyCode);
        QFETCH(const quint32, flags);
        QFETCH(const QString, stored);
        ScriptedStore store;
        SettingsViewModel settings(store);
        ScriptedMonitor monitor;
        HotkeyRecorder recorder(settings, &monitor);
        recorder.record();
        QCOMPARE(monitor.handler({keyCode, flags}), !stored.isEmpty());
        QCOMPARE(recorder.isRecording(), stored.isEmpty());
        QCOMPARE(monitor.handler != nullptr, stored.isEmpty());
        QCOMPARE(recorder.canClear(), !stored.isEmpty() && keyCode != 0);
        QString written;
        for (const ScriptedStore::Write &write : store.writes)
            written += write.value.toString() + u' ';
        QCOMPARE(written + recorder.displayText(),
                 stored.isEmpty() ? QStringLiteral("Not set") : stored);
    }

    void cancelsAndClears()
    {
        ScriptedStore store;
        SettingsViewModel settings(store);
        settings.setHotkeyKeyCode(46);
        ScriptedMonitor monitor;
        HotkeyRecorder recorder(settings, &monitor);
        recorder.record();
        QVERIFY(!recorder.canClear());
        recorder.cancel();
        QVERIFY(!monitor.handler && recorder.canClear());
        store.writes.clear();
        recorder.clear();
        QCOMPARE(store.writes.first().key, QStringLiteral("hotkeyKeyCode"));
        QCOMPARE(store.writes.size(), 2); // not whether it is enabled
        QCOMPARE(recorder.displayText(), QStringLiteral("Not set"));
    }
};

METERKIN_TEST(HotkeyRecorderTest);
#include "HotkeyRecorderTest.moc"
