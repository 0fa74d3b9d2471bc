#include "Support/HandDriver.h"
#include "Support/ShownView.h"
#include "Support/TestMain.h"

using namespace Qt::StringLiterals;

class OnboardingViewTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m = std::make_unique<ShownView>(u"Views/Onboarding/OnboardingView"_s,
                                        QVariantMap{{u"computerWord"_s, u"computer"_s}});
        m_driver.setZero();
        QMetaObject::invokeMethod(m->view.get(), "start");
        m_driver.turnTo(0);
    }
    void cleanup() { m.reset(); }

    void keepsItsTimetables()
    {
        QVERIFY(value("appeared") > 0.0);
        check({{200, "iconLanded"}, {500, "titleVisible"}});
        check({{700, "bullet1Visible"}, {850, "bullet2Visible"}, {1000, "bullet3Visible"}});
        check({{1200, "buttonVisible"}, {1300, "glowPulse"}});
        QMetaObject::invokeMethod(m->view.get(), "leaveWelcome");
        m_driver.setZero();
        check({{500, "circleTrim"}, {900, "checkmarkTrim"}, {1200, "glowOpacity"}});
        check({{1300, "headlineVisible"}, {1500, "subtextVisible"}, {1700, "previewVisible"}});
        check({{2100, "button2Visible"}, {2300, "shimmerPhase"}});
        // The first screen is gone for a screen reader, too.
        QCOMPARE(m->names().join(u'|'),
                 u"You're all set.|Look for the system stats in your menu bar.|42%|3200 RPM|"
                 "Start Using meterkin|Close"_s);
    }

    void springsIntoPlace()
    {
        m_driver.turnTo(200);
        // At 420 ms the first swing is highest: exp(-0.7 pi / sqrt(1 - 0.7 squared)) too far.
        for (const auto &[at, place] : {std::pair(100, 0.3275), {420, 1.046}, {800, 0.9981}}) {
            m_driver.turnTo(200 + at);
            QCOMPARE(std::round(value("iconProgress") * 1000), std::round(place * 1000));
        }
    }

    void waitsForKeysThatAreMeant_data()
    {
        QTest::addColumn<bool>("still");
        QTest::newRow("moving") << false;
        QTest::newRow("with less motion") << true;
    }
    void waitsForKeysThatAreMeant()
    {
        QFETCH(const bool, still);
        m->engine.appearance()->setReducesMotion(still);
        QSignalSpy started(m->view.get(), SIGNAL(getStarted()));
        QSignalSpy completed(m->view.get(), SIGNAL(complete()));
        // Each button has then been wholly there for 400 ms.
        for (const auto &[shown, passed] : {std::pair(1200, &started), {2100, &completed}}) {
            const int ready = shown + (still ? 0 : 300) + 400;
            for (const int at : {0, shown + 1, ready - 20}) {
                m_driver.turnTo(at);
                for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space, Qt::Key_Enter})
                    press(key);
                QVERIFY(passed->isEmpty());
            }
            m_driver.turnTo(ready + 40);
            QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, {}, {}, true);
            QCoreApplication::sendEvent(&m->window, &held);
            QTest::keyRelease(&m->window, Qt::Key_Space);
            QVERIFY(passed->isEmpty());
            press(passed == &started ? Qt::Key_Space : Qt::Key_Return);
            QCOMPARE(passed->count(), 1);
            m_driver.setZero();
        }
        QVERIFY(value("glowPulse") > 0.0); // the first timetable has run on
        m_driver.turnTo(1000);
        QCOMPARE(value("shimmerPhase") < 1.0, !still);
        m->window.hide();
        m_driver.turnTo(1100);
        QCOMPARE(value("shimmerPhase"), 1.0);
    }

private:
    /// Each state is set at its time and not a moment before.
    void check(std::initializer_list<std::pair<int, const char *>> steps)
    {
        for (const auto &[delay, name] : steps) {
            m_driver.turnTo(delay - 1);
            QVERIFY2(value(name) == 0.0, name);
            m_driver.turnTo(delay);
            m_driver.turnTo(delay + 1); // a number is under way a moment later
            QVERIFY2(value(name) > 0.0, name);
        }
    }
    double value(const char *name) const { return m->view->property(name).toDouble(); }
    void press(Qt::Key key) { QTest::keyClick(&m->window, key); }

    HandDriver m_driver;
    std::unique_ptr<ShownView> m;
};

METERKIN_TEST(OnboardingViewTest);
#include "OnboardingViewTest.moc"
