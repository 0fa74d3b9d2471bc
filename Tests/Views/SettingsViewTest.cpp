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
        m.reset();
        // Some are values that the controls would not give themselves.
        m_store.stored = {{u"fanSpeedGreen"_s, 19950.0},
                          {u"memoryGreen"_s, 60.4},
                          {u"cpuUsageGreen"_s, 500.0},
                          {u"updateInterval"_s, 2.0},
                          {u"hotkeyKeyCode"_s, 46}};
        m_settings = std::make_unique<SettingsViewModel>(m_store);
        m_recorder = std::make_unique<HotkeyRecorder>(
            *m_settings, HotkeyRecorder::Dependencies{m_monitor, m_registrar});
        QVariantMap given{{u"fanCount"_s, 0}, {u"version"_s, u"1"_s}, {u"projectLink"_s, QUrl()}};
        given[u"settings"_s] = QVariant::fromValue(m_settings.get());
        given[u"recorder"_s] = QVariant::fromValue(m_recorder.get());
        given[u"updaterController"_s] = QVariant::fromValue(&m_updates);
        m = std::make_unique<ShownView>(u"Views/Settings/SettingsView"_s, given, QSize(470, 520));
        m_store.writes.clear();
    }

    void showsTheTabs()
    {
        QCOMPARE(m->view->implicitWidth(), 470.0);
        m->click({u"Thresholds"_s, u"Alerts"_s});
        m->press({Qt::Key_Right});
        QVERIFY(m->item(u"programName"_s)->isVisible() && !m->item(u"memoryGreen"_s)->isVisible());
        QVERIFY(!m->item(u"checkForUpdates"_s)->isEnabled());
        QCOMPARE(written(), QString());
    }

    void picks()
    {
        QSignalSpy restarted(m->view.get(), SIGNAL(restartCollector(double)));
        QCOMPARE(m->item(u"updateInterval"_s)->property("displayText"), u"2 seconds"_s);
        m->click({u"updateInterval"_s});
        m->press({Qt::Key_End, Qt::Key_Return});
        QCOMPARE(restarted.takeFirst(), QVariantList{10.0});
        m->click({u"menuBarMetric"_s});
        m->press({Qt::Key_Down, Qt::Key_Return});
        QCOMPARE(written(), u"updateInterval=10 menuBarMetric=CPU Usage"_s);
    }

    void steps_data()
    {
        QTest::addColumn<QString>("action"); // a button of the stepper, else what is typed
        QTest::addColumn<QString>("result");
        const auto row = [](const char *setting, const QString &action, const QString &result) {
            QTest::addRow("%s %s", setting, qPrintable(action)) << action << result;
        };
        row("fanSpeedGreen", u"up"_s, u"20000"_s);
        row("fanSpeedYellow", u"up"_s, u"4100"_s);
        row("fanSpeedYellow", u"2550 rpm"_s, u"2600"_s);
        row("memoryGreen", u"down"_s, u"59.4"_s);
        row("memoryGreen", u"60%"_s, {}); // what it showed, rounded
        row("memoryYellow", u"0"_s, u"1"_s);
        row("cpuUsageYellow", u"101"_s, u"100"_s);
        row("cpuUsageYellow", u"12.5"_s, u"13"_s);
        row("cpuUsageYellow", u"none"_s, {});
        row("memoryYellow", u"99999999999999999999"_s, u"100"_s);
        row("cpuUsageGreen", u"up"_s, {}); // beyond the bound already
        row("cpuUsageGreen", u"down"_s, u"100"_s);
    }
    void steps()
    {
        QFETCH(const QString, action);
        const QString setting = QString::fromLatin1(QTest::currentDataTag()).section(u' ', 0, 0);
        m->click({u"Thresholds"_s});
        auto *const button = m->item(setting)->findChild<QQuickItem *>(action);
        auto *const field = m->item(setting)->findChild<QQuickItem *>(u"field"_s);
        m->click(button != nullptr ? button : field);
        for (const QChar letter : button != nullptr ? QString() : action + u'\r')
            QTest::keyClick(&m->window, letter.toLatin1());
        QTEST(written().section(u'=', 1), "result");
        const QString shown = field->property("text").toString();
        QVERIFY(shown.endsWith(setting.startsWith(u"fan") ? u" RPM"_s : u"%"_s));
    }

    void switches()
    {
        QSignalSpy wished(m->view.get(), SIGNAL(launchAtLoginChosen(bool)));
        m->click({u"launchAtLogin"_s, u"launchAtLogin"_s});
        QCOMPARE(wished.takeLast(), QVariantList{false}); // again: nobody has stored it
        m->click({u"hotkeyEnabled"_s, u"Alerts"_s, u"alertFanSpeed"_s, u"alertCPUUsage"_s});
        m->press({Qt::Key_Return, Qt::Key_Space});
        QCOMPARE(written(),
                 u"hotkeyEnabled=true alertFanSpeed=true alertCPUUsage=true "
                 "alertCPUUsage=false alertCPUUsage=true"_s);
    }

    void saysWhatCannotBeStored()
    {
        const QQuickItem *line = m->item(u"storageProblem"_s);
        QVERIFY(!line->isVisible());
        m_store.problem = u"write-protected"_s;
        QVERIFY(line->isVisible() && line->property("text").toString().contains(m_store.problem));
        m_store.problem = QString();
        QVERIFY(!line->isVisible());
    }

    void keyboardReachesAll()
    {
        m->view->setHeight(240);
        m->click({u"About"_s});
        m->press({Qt::Key_Right, Qt::Key_Tab}); // round to General, and into its page
        QVERIFY(m->item(u"menuBarMetric"_s)->hasActiveFocus());
        QTest::keyClick(&m->window, Qt::Key_Tab, Qt::ControlModifier);
        QTest::keyClick(&m->window, Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
        QTest::keyClick(&m->window, Qt::Key_Tab, Qt::ControlModifier);
        m->press({Qt::Key_Tab, Qt::Key_Backtab, Qt::Key_Backtab}); // the bar is one stop
        const QQuickItem *last = m->item(u"cpuUsageYellow"_s);
        QVERIFY(last->isAncestorOf(m->window.activeFocusItem()));
        const auto isInSight = [&] { return last->mapToScene({0.0, last->height()}).y() <= 240; };
        QVERIFY(isInSight());
        m->press({Qt::Key_PageUp, Qt::Key_PageUp});
        QVERIFY(!isInSight());
        m->press({Qt::Key_1, Qt::Key_Escape}); // takes back what was typed, no more
        QVERIFY(m->window.isVisible());
        m_recorder->record();
        m->press({Qt::Key_Escape});
        QVERIFY(m->window.isVisible() && !m_recorder->isRecording());
        m->press({Qt::Key_Escape});
        QVERIFY(!m->window.isVisible());
    }

    void recordsWhileInSight()
    {
        QQuickItem *record = m->item(u"record"_s);
        const QRectF place = record->mapRectToScene(record->boundingRect());
        m->click(record);
        QVERIFY(m_recorder->isRecording() && !m->item(u"clear"_s)->isVisible());
        m->press({Qt::Key_Escape});
        QVERIFY(!m_recorder->isRecording());
        m->click({u"record"_s, u"Alerts"_s});
        QVERIFY(!m_recorder->isRecording());
        m->click({u"General"_s, u"record"_s});
        const QPoint cancel = record->mapToScene(record->boundingRect().center()).toPoint();
        for (int click = 0; click < 2; ++click) // whoever is quick must not clear
            QTest::mouseClick(&m->window, Qt::LeftButton, {}, cancel);
        m->press({Qt::Key_Escape});
        QCOMPARE(written(), QString());
        m->click({u"clear"_s});
        QCOMPARE(written(), u"hotkeyKeyCode=0 hotkeyModifiers=0"_s);
        QCOMPARE(record->mapRectToScene(record->boundingRect()), place);
    }

    void keepsWhatWasTypedWhenItCloses()
    {
        m->click({u"Thresholds"_s});
        QVERIFY(!m->item(u"memoryRemark"_s)->isVisible());
        m->click(m->item(u"memoryGreen"_s)->findChild<QQuickItem *>(u"field"_s));
        m->press({Qt::Key_9, Qt::Key_5});
        m->window.close();
        QCOMPARE(written(), u"memoryGreen=95"_s);
        QVERIFY(m->item(u"memoryRemark"_s)->property("visible").toBool()); // above yellow
    }

    void showsTheIntervalInEffect_data()
    {
        QTest::addColumn<double>("stored");
        QTest::addColumn<QString>("shown");
        QTest::newRow("no number, or none") << 0.0 << u"3 seconds"_s;
        QTest::newRow("negative") << -5.0 << u"3 seconds"_s;
        QTest::newRow("NaN") << std::numeric_limits<double>::quiet_NaN() << u"3 seconds"_s;
        QTest::newRow("below the floor") << 0.05 << u"0.1 seconds"_s;
        QTest::newRow("none of the choices") << 2.5 << u"2.5 seconds"_s;
    }
    void showsTheIntervalInEffect()
    {
        QFETCH(const double, stored);
        m_settings->setUpdateInterval(stored);
        QTEST(m->item(u"updateInterval"_s)->property("displayText").toString(), "shown");
    }

private:
    /// What was stored since it was asked last.
    QString written()
    {
        QStringList texts;
        for (const ScriptedStore::Write &write : std::exchange(m_store.writes, {}))
            texts += write.key + u'=' + write.value.toString();
        return texts.join(u' ');
    }

    ScriptedStore m_store;
    ScriptedKeyDownMonitor m_monitor;
    ScriptedHotkeyRegistrar m_registrar;
    ScriptedUpdateFramework m_framework;
    ScriptedInformationAlert m_alert;
    UpdaterController m_updates{m_framework, m_store, {}, m_alert};
    std::unique_ptr<SettingsViewModel> m_settings;
    std::unique_ptr<HotkeyRecorder> m_recorder;
    std::unique_ptr<ShownView> m;
};

METERKIN_TEST(SettingsViewTest);
#include "SettingsViewTest.moc"
