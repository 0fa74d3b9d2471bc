#include "Model/SettingsViewModel.h"
#include "Services/HotkeyRecorder.h"
#include "Support/ScriptedServices.h"
#include "Support/ScriptedStore.h"
#include "Support/ShownView.h"
#include "Support/TestMain.h"
#include "Updates/UpdaterController.h"

using namespace Qt::StringLiterals;

class SettingsViewTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_shown.reset();
        // Some are values that the controls would not give themselves.
        m_store.stored = {{u"fanSpeedGreen"_s, 19950.0},
                          {u"memoryGreen"_s, 60.4},
                          {u"cpuUsageGreen"_s, 500.0},
                          {u"hotkeyKeyCode"_s, 46}};
        m_settings = std::make_unique<SettingsViewModel>(m_store);
        m_recorder = std::make_unique<HotkeyRecorder>(
            *m_settings, HotkeyRecorder::Dependencies{m_monitor, m_registrar});
        QVariantMap given{{u"fanCount"_s, 0}, {u"version"_s, u"1"_s}, {u"projectLink"_s, QUrl()}};
        given[u"settings"_s] = QVariant::fromValue(m_settings.get());
        given[u"recorder"_s] = QVariant::fromValue(m_recorder.get());
        given[u"updaterController"_s] = QVariant::fromValue(&m_updates);
        m_shown =
            std::make_unique<ShownView>(u"Views/Settings/SettingsView"_s, given, QSize(470, 520));
        m_shown->view->setFocus(true);
        m_store.writes.clear();
    }

    void choosesTheInterval()
    {
        const auto shown = [this] {
            return m_shown->item(u"Read metrics every:"_s)->property("displayText").toString();
        };
        for (const auto &[stored, inEffect] :
             {std::pair(-5.0, u"3 seconds"_s), {0.05, u"0.1 seconds"_s}}) {
            m_settings->setUpdateInterval(stored);
            QCOMPARE(shown(), inEffect);
        }
        QSignalSpy restarted(m_shown->view.get(), SIGNAL(restartCollector(double)));
        m_shown->click({u"Read metrics every:"_s});
        m_shown->press({Qt::Key_End, Qt::Key_Return});
        QCOMPARE(restarted.takeFirst(), QVariantList{10.0});
    }

    void steps()
    {
        // A button of the stepper, or what is typed; what is stored, if anything.
        for (const auto &[stepper, action, stored] :
             {std::tuple(u"Fan Speed, Green"_s, u"up"_s, u"fanSpeedGreen=20000"_s),
              {u"Fan Speed, Yellow"_s, u"2550 rpm"_s, u"fanSpeedYellow=2600"_s},
              {u"Memory Usage, Green"_s, u"60%"_s, {}}, // what it showed, rounded
              {u"Memory Usage, Yellow"_s, u"0"_s, u"memoryYellow=1"_s},
              {u"Memory Usage, Yellow"_s, u"99999999999999999999"_s, u"memoryYellow=100"_s},
              {u"CPU Usage, Yellow"_s, u"none"_s, {}},
              {u"CPU Usage, Green"_s, u"up"_s, {}}, // beyond the bound already
              {u"CPU Usage, Green"_s, u"down"_s, u"cpuUsageGreen=100"_s}}) {
            init();
            m_shown->click({u"Thresholds"_s});
            const QQuickItem *field = m_shown->item(stepper + u" below:"_s);
            const auto *button = field->parentItem()->findChild<QQuickItem *>(action);
            m_shown->click(button != nullptr ? button : field);
            for (const QChar letter : button != nullptr ? QString() : action + u'\r')
                QTest::keyClick(&m_shown->window, letter.toLatin1());
            QCOMPARE(written(), stored);
            const QString unit = stepper[0] == u'F' ? u" RPM"_s : u"%"_s;
            QVERIFY(field->property("text").toString().endsWith(unit));
        }
    }

    void saysWhatCannotBeStored()
    {
        for (const QString &problem : {QString(), u"write-protected"_s, QString()}) {
            m_store.problem = problem;
            QCOMPARE(
                m_shown->names().join(u' ').contains(u"last until you quit: write-protected"_s),
                !problem.isEmpty());
        }
    }

    void keyboardReachesAll()
    {
        m_shown->view->setHeight(240);
        m_shown->click({u"About"_s});
        m_shown->press({Qt::Key_Right, Qt::Key_Tab}); // round to General, and into its page
        QVERIFY(m_shown->item(u"Show in menu bar:"_s)->hasActiveFocus());
        QTest::keyClick(&m_shown->window, Qt::Key_Tab, Qt::ControlModifier);
        QTest::keyClick(&m_shown->window, Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
        QTest::keyClick(&m_shown->window, Qt::Key_Tab, Qt::ControlModifier);
        m_shown->press({Qt::Key_Tab, Qt::Key_Backtab, Qt::Key_Backtab}); // the bar is one stop
        const QQuickItem *last = m_shown->window.activeFocusItem();
        QCOMPARE(last, m_shown->item(u"CPU Usage, Yellow below:"_s));
        const auto isInSight = [&] { return last->mapToScene({0.0, last->height()}).y() <= 240; };
        QVERIFY(isInSight());
        m_shown->press({Qt::Key_PageUp, Qt::Key_PageUp});
        QVERIFY(!isInSight());
        m_shown->press({Qt::Key_1, Qt::Key_Escape}); // takes back what was typed, no more
        QVERIFY(m_shown->window.isVisible());
        m_recorder->record();
        m_shown->press({Qt::Key_Escape});
        QVERIFY(m_shown->window.isVisible() && !m_recorder->isRecording());
        m_shown->press({Qt::Key_Escape});
        QVERIFY(!m_shown->window.isVisible());
    }

    void recordsWhileInSight()
    {
        const QQuickItem *button = m_shown->item(u"Record"_s);
        m_shown->click(button);
        QVERIFY(m_recorder->isRecording() && !m_shown->item(u"Clear"_s));
        m_shown->press({Qt::Key_Escape});
        QVERIFY(!m_recorder->isRecording());
        m_shown->click({u"Record"_s, u"Alerts"_s});
        QVERIFY(!m_recorder->isRecording());
        m_shown->click({u"General"_s, u"Record"_s});
        QCOMPARE(m_shown->item(u"Cancel"_s), button);
        const QPointF cancel = button->mapToScene(button->boundingRect().center());
        for (int click = 0; click < 2; ++click) // whoever is quick must not clear
            QTest::mouseClick(&m_shown->window, Qt::LeftButton, {}, cancel.toPoint());
        m_shown->press({Qt::Key_Escape});
        QCOMPARE(written(), QString());
        m_shown->click({u"Clear"_s});
        QCOMPARE(written(), u"hotkeyKeyCode=0 hotkeyModifiers=0"_s);
        QCOMPARE(button->mapToScene(button->boundingRect().center()), cancel);
    }

    void keepsWhatWasTypedWhenItCloses()
    {
        m_shown->click({u"Thresholds"_s, u"Memory Usage, Green below:"_s});
        m_shown->press({Qt::Key_9, Qt::Key_5});
        m_shown->window.close();
        QCOMPARE(written(), u"memoryGreen=95"_s);
        m_shown->window.show();
        const QString remark = u"Yellow will not appear: green reaches as far or further."_s;
        QCOMPARE(m_shown->names().count(remark), 3); // those stored at first are no better
    }

private:
    /// What was stored since the last call.
    QString written()
    {
        QStringList texts;
        for (const ScriptedStore::Write &write : std::exchange(m_store.writes, {}))
            texts += write.key + u'=' + write.value.toString();
        return texts.join(u' ');
    }

    ScriptedStore m_store;
    ScriptedUpdateFramework m_framework;
    ScriptedKeyDownMonitor m_monitor;
    ScriptedHotkeyRegistrar m_registrar;
    UpdaterController m_updates{m_framework, m_store, {}, {}};
    std::unique_ptr<SettingsViewModel> m_settings;
    std::unique_ptr<HotkeyRecorder> m_recorder;
    std::unique_ptr<ShownView> m_shown;
};

METERKIN_TEST(SettingsViewTest);
#include "SettingsViewTest.moc"
