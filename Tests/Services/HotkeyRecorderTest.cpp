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
    void captures()
    {
        // A key and its flags; what is stored and shown, or nothing where it is passed on.
        for (const auto &[keyCode, flags, stored] :
             {std::tuple(40U, 0x20000U, QString()), // Shift alone
              {40U, 0xFFE1FFFFU, {}}, // locks alone
              {53U, 0U, {}}, // Esc alone
              {255U, 0x100000U, {}}, // no key code
              {122U, 0x110000U, u"122 256 ⌘F1"_s}, // with a lock
              {0U, 0x1E0000U, u"0 6912 ^⌥⇧⌘A"_s},
              {10U, 0xFFA8FFFFU, u"10 2048 ⌥Key(10)"_s}}) {
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
