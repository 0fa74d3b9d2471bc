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

    void runsItsTimetables()
    {
        QVERIFY(value("appeared") > 0.0 && value("buttonVisible") == 0.0);
        m_driver.turnTo(1201);
        QVERIFY(value("bullet3Visible") > 0.0 && value("buttonVisible") > 0.0);
        QMetaObject::invokeMethod(m->view.get(), "leaveWelcome");
        m_driver.setZero();
        m_driver.turnTo(2101);
        QVERIFY(value("checkmarkTrim") > 0.0 && value("button2Visible") > 0.0);
        // The first screen is gone for a screen reader, too.
        QCOMPARE(m->names().join(u'|'),
                 u"You're all set.|Look for the system stats in your menu bar.|42%|3200 RPM|"
                 "Start Using meterkin|Close"_s);
    }

    void waitsForKeysThatAreMeant_data()
    {
        QTest::addColumn<bool>("still");
        QTest::newRow("moving") << false;
        QTest::newRow("less motion") << true;
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
    double value(const char *name) const { return m->view->property(name).toDouble(); }
    void press(Qt::Key key) { QTest::keyClick(&m->window, key); }

    HandDriver m_driver;
    std::unique_ptr<ShownView> m;
};

METERKIN_TEST(OnboardingViewTest);
#include "OnboardingViewTest.moc"
