#include "Services/HotkeyRecorder.h"

#include "Model/SettingsViewModel.h"
#include "Platform/KeyboardLayout.h"
#include "Support/ScriptedServices.h"
#include "Support/ScriptedStore.h"
#include "Support/TestMain.h"

#include <QtTest>

namespace {

struct ScriptedLayout : KeyboardLayout {
    QString key; ///< every combination's text

    QString write(const HotkeyCombination &) override { return key; }
    using KeyboardLayout::handleChange;
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
        QTest::newRow("key code 0") << 0U << 0x1E0000U << QStringLiteral("0 6912 ^⌥⇧⌘A");
        QTest::newRow("no name") << 123U << 0x100000U << QStringLiteral("123 256 ⌘Key(123)");
        QTest::newRow("all else") << 10U << 0xFFA8FFFFU << QStringLiteral("10 2048 ⌥Key(10)");
    }
    void captures()
    {
        QFETCH(const quint32, keyCode);
        QFETCH(const quint32, flags);
        QFETCH(const QString, stored);
        ScriptedStore store;
        SettingsViewModel settings(store);
        ScriptedKeyDownMonitor monitor;
        ScriptedHotkeyRegistrar registrar;
        HotkeyRecorder recorder(settings, {monitor, registrar});
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
        recorder.cancel();
        QVERIFY(!monitor.handler);
    }

    void remarks_data()
    {
        QTest::addColumn<quint32>("modifiers");
        QTest::addColumn<QString>("key");
        QTest::addColumn<HotkeyObstacle>("obstacle");
        QTest::addColumn<QString>("said");
        const QString another = QStringLiteral("Not available now: another program uses it.");
        const QString letter = QStringLiteral("While it is on, no other program gets Ö.");
        const auto row = [](const char *key, quint32 modifiers, HotkeyObstacle obstacle,
                            const QString &said) {
            QTest::addRow("%s %u %d", key, modifiers, static_cast<int>(obstacle))
                << modifiers << QString::fromUtf8(key) << obstacle << said;
        };
        row("Ö", 0x1800, HotkeyObstacle::None, {});
        row("Ö", 0x1000, HotkeyObstacle::None, letter);
        row("1", 0x1000, HotkeyObstacle::None, {});
        row("Left", 0x1000, HotkeyObstacle::OtherProgram, another);
        row("Ö", 0x1000, HotkeyObstacle::OtherProgram, another + u'\n' + letter);
    }
    void remarks()
    {
        QFETCH(const quint32, modifiers);
        QFETCH(const QString, key);
        QFETCH(const HotkeyObstacle, obstacle);
        ScriptedStore store;
        SettingsViewModel settings(store);
        settings.setHotkeyKeyCode(46);
        ScriptedHotkeyRegistrar registrar;
        ScriptedKeyDownMonitor monitor;
        ScriptedLayout layout;
        const HotkeyRecorder recorder(settings, {monitor, registrar, &layout});
        settings.setHotkeyModifiers(modifiers);
        layout.key = key;
        layout.handleChange();
        registrar.setObstacle(obstacle);
        QCOMPARE(recorder.displayText(), key);
        QTEST(recorder.remark(), "said");
    }
};

METERKIN_TEST(HotkeyRecorderTest);
#include "HotkeyRecorderTest.moc"
