#include "Model/SettingsViewModel.h"
#include "Support/ScriptedDashboard.h"
#include "Support/ScriptedStore.h"
#include "Support/TestMain.h"
#include "Views/ViewEngine.h"

#include <QQmlComponent>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QtTest>

namespace {

constexpr std::uint64_t Gibibyte = 1ULL << 30U;

/// Every text that can be seen, in the order of the layout.
QStringList textsIn(const QQuickItem *item)
{
    if (!item->isVisible())
        return {};
    QStringList texts;
    // Not of controls: their content shows it.
    if (item->inherits("QQuickText") && !item->property("text").toString().isEmpty())
        texts << item->property("text").toString();
    for (const QQuickItem *child : item->childItems())
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
        m_window.reset();
        m_engine.reset();
        m_machine.reset();
    }

    void wordsTheReadings_data()
    {
        QTest::addColumn<Vitals>("vitals");
        QTest::addColumn<int>("samples");
        QTest::addColumn<QString>("texts");
        const Vitals busy{.memory = 50.0, .cpuUsage = 37.5, .totalMemory = 16 * Gibibyte};
        const QString memory = QStringLiteral(
            "meterkin|Memory Usage|8.0 / 16.0 GB (50%)|H: 50%|L: 50%|Active: 8.0G|Wired: 0.0G|"
            "Compressed: 0.0G|");
        const QString cpu = memory + QStringLiteral("CPU Usage|37.5%|H: 38%|L: 0%|Per-Core|");
        const auto row = [](const char *name, const Vitals &vitals, int samples,
                            const QString &texts) {
            QTest::newRow(name) << vitals << samples << texts;
        };
        row("before the first tick", {}, 0,
            QStringLiteral("meterkin|Memory Usage|N/A|CPU Usage|N/A|"));
        row("nothing readable", {}, 2, QStringLiteral("meterkin|Memory Usage|N/A|CPU Usage|N/A|"));
        row("no memory at all", {.memory = 0.0, .totalMemory = 0}, 1,
            QStringLiteral("meterkin|Memory Usage|0.0 / 0.0 GB (0%)|H: 0%|L: 0%|Active: 0.0G|"
                           "Wired: 0.0G|Compressed: 0.0G|CPU Usage|N/A|"));
        row("no fan", busy, 2, cpu);
        Vitals withFans = busy;
        withFans.fanSpeed = 1850.0;
        withFans.fanRange = 6000.0;
        const QString fan = cpu + QStringLiteral("Fan Speed|1850 RPM|H: 1850 RPM|L: 1850 RPM|");
        row("one fan", withFans, 2, fan + QStringLiteral("Range: 600 - 6000 RPM|"));
        withFans.fans = 3;
        row("three fans", withFans, 2,
            fan
                + QStringLiteral("Fan 1|Range: 600 - 6000 RPM|Fan 2|Range: 600 - 6000 RPM|"
                                 "Fan 3|Range: 600 - 6000 RPM|"));
        withFans.fans = 2;
        withFans.fanRange.reset();
        row("two fans without a range", withFans, 2, fan + QStringLiteral("Fan 1|Fan 2|"));
        withFans.fans = 1;
        row("one fan without a range", withFans, 2, fan);
    }
    void wordsTheReadings()
    {
        QFETCH(Vitals, vitals);
        QFETCH(int, samples);
        show(vitals);
        for (int i = 0; i < samples; ++i)
            m_machine->report(vitals);
        QTEST(textsIn(m_view).join(u'|') + u'|', "texts");
    }

    void keepsToTheMeasures()
    {
        const Vitals vitals{.fanSpeed = 1850.0, .memory = 85.0, .cpuUsage = 50.0, .cores = 4};
        show(vitals);
        for (int i = 0; i < 3; ++i)
            m_machine->report(vitals);
        QCOMPARE(m_view->implicitWidth(), 320.0);
        QCOMPARE(rect("scrollArea").top(), height("name") + 20 + 1);
        QCOMPARE(rect("memoryCard").top(), rect("scrollArea").top() + 10);
        QCOMPARE(rect("coreBars"), QRectF(22, rect("coreBars").top(), 276, 40));
        QTRY_COMPARE(m_view->implicitHeight(), // laid out
                     rect("fanCard").bottom() + 10 + 1 + height("settingsButton") + 16);
        // Equal to a threshold is the tier above; the thresholds may change while it is open.
        QCOMPARE(colorIn("memoryCard"), theme("red"));
        QCOMPARE(colorIn("cpuCard"), theme("yellow"));
        m_settings.setCpuUsageGreen(51.0);
        QCOMPARE(colorIn("cpuCard"), theme("green"));
    }

    void restsWhileHidden()
    {
        show({});
        m_window->hide();
        m_machine->report({.memory = 42.0});
        QVERIFY(!textsIn(m_view).join(u'|').contains(QStringLiteral("42")));
        m_window->show();
        QTRY_VERIFY(textsIn(m_view).join(u'|').contains(QStringLiteral("(42%)")));
    }

    void scrollsWhereTheScreenIsLow()
    {
        show({.memory = 42.0});
        m_view->setHeight(200.0);
        auto *area = item("scrollArea");
        QCOMPARE(height("settingsButton") + 16 + rect("scrollArea").bottom() + 1, 200.0);
        QTest::keyClick(m_window.get(), Qt::Key_Down);
        QTRY_VERIFY(area->property("contentY").toDouble() > 0.0);
    }

    void buttonsAnswerToMouseAndKeys()
    {
        show({});
        QSignalSpy settings(m_view, SIGNAL(openSettings()));
        QSignalSpy quit(m_view, SIGNAL(quit()));
        QTest::mouseClick(m_window.get(), Qt::LeftButton, {},
                          rect("settingsButton").center().toPoint());
        QTest::mouseClick(m_window.get(), Qt::LeftButton, {},
                          rect("quitButton").center().toPoint());
        QCOMPARE(settings.size(), 1);
        QCOMPARE(quit.size(), 1);
        QTest::keyClick(m_window.get(), Qt::Key_Tab);
        QTest::keyClick(m_window.get(), Qt::Key_Return);
        QCOMPARE(settings.size(), 2);
        QTest::keyClick(m_window.get(), Qt::Key_Tab);
        QTest::keyClick(m_window.get(), Qt::Key_Space);
        QCOMPARE(quit.size(), 2);
        m_window->hide();
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        QTest::keyClick(m_window.get(), Qt::Key_Return);
        QCOMPARE(quit.size(), 2); // nothing has the focus when it is opened anew
    }

private:
    void show(const Vitals &vitals)
    {
        m_machine = std::make_unique<ScriptedDashboard>(vitals);
        m_engine = std::make_unique<ViewEngine>();
        m_window = std::make_unique<QQuickWindow>();
        m_view = m_engine
                     ->create(QStringLiteral("Views/Dashboard/DashboardView"),
                              {{QStringLiteral("viewModel"),
                                QVariant::fromValue(&m_machine->dashboard())},
                               {QStringLiteral("settings"), QVariant::fromValue(&m_settings)}})
                     .release();
        m_view->setParent(m_window.get());
        m_view->setParentItem(m_window->contentItem());
        m_view->setWidth(320.0);
        m_view->setHeight(600.0);
        m_view->setFocus(true);
        m_window->resize(320, 600);
        m_window->show();
        m_window->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }
    QQuickItem *item(const char *name, const QObject *within = nullptr) const
    {
        return (within ? within : m_view)->findChild<QQuickItem *>(QString::fromLatin1(name));
    }
    QRectF rect(const char *name) const
    {
        return item(name)->mapRectToItem(m_view, item(name)->boundingRect());
    }
    double height(const char *name) const { return item(name)->height(); }
    QColor colorIn(const char *card) const
    {
        return item("value", item(card))->property("color").value<QColor>();
    }
    QColor theme(const char *name)
    {
        QQmlComponent probe(m_engine.get());
        probe.setData(QByteArray("import QtQuick; import Meterkin.Views;"
                                 "QtObject { property color found: Theme.")
                          + name + " }",
                      QUrl());
        return std::unique_ptr<QObject>(probe.create())->property("found").value<QColor>();
    }

    ScriptedStore m_store;
    SettingsViewModel m_settings{m_store};
    std::unique_ptr<ScriptedDashboard> m_machine;
    std::unique_ptr<ViewEngine> m_engine;
    std::unique_ptr<QQuickWindow> m_window;
    QQuickItem *m_view = nullptr;
};

METERKIN_TEST(DashboardViewTest);
#include "DashboardViewTest.moc"
