#include "Model/SettingsViewModel.h"
#include "Support/ScriptedDashboard.h"
#include "Support/ScriptedStore.h"
#include "Support/ShownView.h"
#include "Support/TestMain.h"

using namespace Qt::StringLiterals;

namespace {

constexpr std::uint64_t Gibibyte = 1ULL << 30U;
enum Hue { Red = 0, Yellow = 1, Green = 3 }; // in steps of 50 degrees

QList<const QQuickItem *> textsIn(const QQuickItem *item)
{
    QList<const QQuickItem *> texts;
    // Not of controls: their content shows it.
    if (item->isVisible() && item->inherits("QQuickText")
        && !item->property("text").toString().isEmpty())
        texts << item;
    for (const QQuickItem *child : item->isVisible() ? item->childItems() : QList<QQuickItem *>())
        texts << textsIn(child);
    return texts;
}

} // namespace

/// The dashboard in a window, over a machine that reports what the test says.
class DashboardViewTest : public QObject {
    Q_OBJECT

private slots:
    void cleanup()
    {
        m.reset();
        m_machine.reset();
    }

    void wordsTheReadings_data()
    {
        QTest::addColumn<Vitals>("vitals");
        QTest::addColumn<int>("samples");
        QTest::addColumn<QString>("texts");
        const auto row = [](const char *name, const Vitals &vitals, int samples,
                            const QString &texts) {
            QTest::newRow(name) << vitals << samples << u"meterkin|Memory Usage|"_s + texts;
        };
        const Vitals busy{.memory = 50.0, .cpuUsage = 37.5, .totalMemory = 16 * Gibibyte};
        const QString cpu = u"8.0 / 16.0 GB (50%)|H: 50%|L: 50%|Active: 8.0G|Wired: 0.0G|"
                            "Compressed: 0.0G|CPU Usage|37.5%|H: 38%|L: 0%|Per-Core"_s;
        row("before the first tick", {}, 0, u"N/A|CPU Usage|N/A"_s);
        row("no memory at all", {.memory = 0.0, .totalMemory = 0}, 1,
            u"0.0 / 0.0 GB (0%)|H: 0%|L: 0%|Active: 0.0G|Wired: 0.0G|Compressed: 0.0G|"
            "CPU Usage|N/A"_s);
        row("no fan", busy, 2, cpu);
        Vitals withFans = busy;
        withFans.fanSpeed = 1850.0;
        withFans.fanRange = 6000.0;
        const QString fan = cpu + u"|Fan Speed|1850 RPM|H: 1850 RPM|L: 1850 RPM"_s;
        const QString range = u"|Range: 600 - 6000 RPM"_s;
        row("one fan", withFans, 2, fan + range);
        withFans.fans = 2;
        row("two fans", withFans, 2, fan + u"|Fan 1"_s + range + u"|Fan 2"_s + range);
        withFans.fanRange.reset();
        row("two fans without a range", withFans, 2, fan + u"|Fan 1|Fan 2"_s);
    }
    void wordsTheReadings()
    {
        QFETCH(Vitals, vitals);
        QFETCH(int, samples);
        show(vitals);
        for (int i = 0; i < samples; ++i)
            m_machine->report(vitals);
        QFETCH(QString, texts);
        QTRY_COMPARE(this->texts(), texts);
    }

    void colorsFollowReadingsAndThresholds()
    {
        const Vitals vitals{.fanSpeed = 1850.0, .memory = 85.0, .cpuUsage = 50.0, .cores = 4};
        show(vitals);
        for (int i = 0; i < 3; ++i)
            m_machine->report(vitals);
        QTRY_COMPARE(hueOf(u"50.0%"_s), Yellow); // equal to a threshold is the tier above
        QCOMPARE(hueOf(u"1850 RPM"_s), Green);
        QVERIFY(texts().contains(u"(85%)"_s));
        m_settings.setCpuUsageGreen(51.0);
        QTRY_COMPARE(hueOf(u"50.0%"_s), Green);
        m_settings.setCpuUsageGreen(10.0);
        m_settings.setCpuUsageYellow(20.0);
        QTRY_COMPARE(hueOf(u"50.0%"_s), Red);
    }

    void restsWhileHidden()
    {
        show({});
        m->window.hide();
        m_machine->report({.memory = 42.0});
        QCoreApplication::processEvents();
        QVERIFY(!texts().contains(u"42"_s));
        m->window.show();
        QTRY_VERIFY(texts().contains(u"(42%)"_s));
    }

    void scrollsWhereTheScreenIsLow()
    {
        show({.memory = 42.0});
        m->view->setHeight(200.0);
        const QQuickItem *area = m->view->findChild<QQuickItem *>(u"scrollArea"_s);
        QVERIFY(area->height() < 200.0 && m->item(u"Quit meterkin"_s)->mapToScene({}).y() < 200.0);
        m->press({Qt::Key_Down});
        QTRY_VERIFY(area->property("contentY").toDouble() > 0.0);
    }

    void buttonsAnswerToMouseAndKeys()
    {
        show({});
        QSignalSpy settings(m->view.get(), SIGNAL(openSettings()));
        QSignalSpy quit(m->view.get(), SIGNAL(quit()));
        m->click({u"Open Settings"_s, u"Quit meterkin"_s});
        QCOMPARE(settings.size(), 1);
        QCOMPARE(quit.size(), 1);
        m->press({Qt::Key_Tab, Qt::Key_Return, Qt::Key_Tab, Qt::Key_Space});
        QCOMPARE(settings.size(), 2);
        QCOMPARE(quit.size(), 2);
        m->window.hide();
        m->window.show();
        QVERIFY(QTest::qWaitForWindowActive(&m->window));
        m->press({Qt::Key_Return});
        QCOMPARE(quit.size(), 2); // nothing has the focus when it is opened anew
    }

private:
    void show(const Vitals &vitals)
    {
        m_machine = std::make_unique<ScriptedDashboard>(vitals);
        m = std::make_unique<ShownView>(
            u"Views/Dashboard/DashboardView"_s,
            QVariantMap{{u"viewModel"_s, QVariant::fromValue(&m_machine->dashboard())},
                        {u"settings"_s, QVariant::fromValue(&m_settings)}},
            QSize(320, 600));
        m->view->setFocus(true);
    }
    /// All that can be read, in the order of the layout.
    QString texts() const
    {
        QStringList texts;
        for (const QQuickItem *text : textsIn(m->view.get()))
            texts << text->property("text").toString();
        return texts.join(u'|');
    }
    Hue hueOf(const QString &wanted) const
    {
        for (const QQuickItem *text : textsIn(m->view.get()))
            if (text->property("text") == wanted)
                return Hue((text->property("color").value<QColor>().hue() + 20) % 360 / 50);
        return {};
    }

    ScriptedStore m_store;
    SettingsViewModel m_settings{m_store};
    std::unique_ptr<ScriptedDashboard> m_machine;
    std::unique_ptr<ShownView> m;
};

METERKIN_TEST(DashboardViewTest);
#include "DashboardViewTest.moc"
