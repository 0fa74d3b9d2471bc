#include "Services/HotkeyRecorder.h"

#include "Model/SettingsViewModel.h"
#include "Platform/KeyboardLayout.h"
#include "Support/ScriptedServices.h"
#include "Support/ScriptedStore.h"
#include "Support/TestMain.h"

#include <QtTest>

using namespace Qt::StringLiterals;

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
        QTest::newRow("control") << 40U << 0x40000U << u"40 4096 ^K"_s;
        QTest::newRow("command, caps lock") << 122U << 0x110000U << u"122 256 ⌘F1"_s;
        QTest::newRow("key code 0") << 0U << 0x1E0000U << u"0 6912 ^⌥⇧⌘A"_s;
        QTest::newRow("no name, all else") << 10U << 0xFFA8FFFFU << u"10 2048 ⌥Key(10)"_s;
    }
    void captures()
    {
        QFETCH(const quint32, keyCode);
        QFETCH(const quint32, flags);
        QFETCH(const QString, stored);
        HotkeyRecorder recorder(m_settings, {m_monitor, m_registrar});
        m_settings.setHotkeyKeyCode(0);
        m_settings.setHotkeyModifiers(0);
        m_store.writes.clear();
        recorder.record();
        QCOMPARE(m_monitor.handler({keyCode, flags}), !stored.isEmpty());
        QCOMPARE(recorder.isRecording(), stored.isEmpty());
        QCOMPARE(m_monitor.handler != nullptr, stored.isEmpty());
        QCOMPARE(recorder.canClear(), !stored.isEmpty() && keyCode != 0);
        QString written;
        for (const ScriptedStore::Write &write : m_store.writes)
            written += write.value.toString() + u' ';
        QCOMPARE(written + recorder.displayText(), stored.isEmpty() ? u"Not set"_s : stored);
        recorder.cancel();
        QVERIFY(!m_monitor.handler);
    }

    void remarks()
    {
        const QString another = u"Not available now: another program uses it."_s;
        const QString letter = u"While it is on, no other program gets Ö."_s;
        ScriptedLayout layout;
        const HotkeyRecorder recorder(m_settings, {m_monitor, m_registrar, &layout});
        m_settings.setHotkeyKeyCode(46);
        for (const auto &[key, modifiers, obstacle, said] :
             {std::tuple(u"Ö"_s, 0x1800U, HotkeyObstacle::None, QString()),
              {u"Ö"_s, 0x1000U, HotkeyObstacle::None, letter},
              {u"1"_s, 0x1000U, HotkeyObstacle::None, QString()},
              {u"Left"_s, 0x1000U, HotkeyObstacle::OtherProgram, another},
              {u"Ö"_s, 0x1000U, HotkeyObstacle::OtherProgram, another + u'\n' + letter}}) {
            m_settings.setHotkeyModifiers(modifiers);
            layout.key = key;
            layout.handleChange();
            m_registrar.setObstacle(obstacle);
            QCOMPARE(recorder.displayText(), key);
            QCOMPARE(recorder.remark(), said);
        }
    }

private:
    ScriptedStore m_store;
    SettingsViewModel m_settings{m_store};
    ScriptedKeyDownMonitor m_monitor;
    ScriptedHotkeyRegistrar m_registrar;
};

METERKIN_TEST(HotkeyRecorderTest);
#include "HotkeyRecorderTest.moc"
