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
    void wordsTheReadings()
    {
        const Vitals busy{.fanSpeed = 1850.0,
                          .memory = 50.0,
                          .cpuUsage = 37.5,
                          .fans = 2,
                          .fanRange = 6000.0,
                          .totalMemory = 16 * Gibibyte};
        for (const auto &[vitals, samples, words] :
             {std::tuple(Vitals(), 0, u"N/A|CPU Usage|N/A"_s),
              {{.fanSpeed = 1850.0, .memory = 0.0, .totalMemory = 0},
               1,
               u"0.0 / 0.0 GB (0%)|H: 0%|L: 0%|Active: 0.0G|Wired: 0.0G|Compressed: 0.0G|"
               "CPU Usage|N/A|Fan Speed|1850 RPM|H: 1850 RPM|L: 1850 RPM|1850 RPM"_s},
              {busy, 2,
               u"8.0 / 16.0 GB (50%)|H: 50%|L: 50%|Active: 8.0G|Wired: 0.0G|Compressed: 0.0G|"
               "CPU Usage|37.5%|H: 38%|L: 0%|Per-Core|Fan Speed|1850 RPM|H: 1850 RPM|"
               "L: 1850 RPM|Fan 1|Range: 600 - 6000 RPM|Fan 2|Range: 600 - 6000 RPM"_s}}) {
            show(vitals);
            for (int i = 0; i < samples; ++i)
                m_machine->report(vitals);
            QTRY_COMPARE(texts(), u"meterkin|Memory Usage|"_s + words);
        }
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
        m_shown->window.hide();
        m_machine->report({.memory = 42.0});
        QCoreApplication::processEvents();
        QVERIFY(!texts().contains(u"42"_s));
        m_shown->window.show();
        QTRY_VERIFY(texts().contains(u"(42%)"_s));
    }

    void scrollsWhereTheScreenIsLow()
    {
        show({.memory = 42.0});
        m_shown->view->setHeight(200.0);
        const QQuickItem *area = m_shown->view->findChild<QQuickItem *>(u"scrollArea"_s);
        QVERIFY(area->height() < 200.0
                && m_shown->item(u"Quit meterkin"_s)->mapToScene({}).y() < 200.0);
        m_shown->press({Qt::Key_Down});
        QTRY_VERIFY(area->property("contentY").toDouble() > 0.0);
    }

private:
    void show(const Vitals &vitals)
    {
        m_shown.reset();
        m_machine = std::make_unique<ScriptedDashboard>(vitals);
        m_shown = std::make_unique<ShownView>(
            u"Views/Dashboard/DashboardView"_s,
            QVariantMap{{u"viewModel"_s, QVariant::fromValue(&m_machine->dashboard())},
                        {u"settings"_s, QVariant::fromValue(&m_settings)}},
            QSize(320, 600));
        m_shown->view->setFocus(true);
    }
    /// All that can be read, in the order of the layout.
    QString texts() const
    {
        QStringList texts;
        for (const QQuickItem *text : textsIn(m_shown->view.get()))
            texts << text->property("text").toString();
        return texts.join(u'|');
    }
    Hue hueOf(const QString &wanted) const
    {
        for (const QQuickItem *text : textsIn(m_shown->view.get()))
            if (text->property("text") == wanted)
                return Hue((text->property("color").value<QColor>().hue() + 20) % 360 / 50);
        return {};
    }

    ScriptedStore m_store;
    SettingsViewModel m_settings{m_store};
    std::unique_ptr<ScriptedDashboard> m_machine;
    std::unique_ptr<ShownView> m_shown;
};

METERKIN_TEST(DashboardViewTest);
#include "DashboardViewTest.moc"
