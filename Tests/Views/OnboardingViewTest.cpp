#include "Support/ShownView.h"
#include "Support/TestMain.h"

#include <QAnimationDriver>
#include <QVariantAnimation>

using namespace Qt::StringLiterals;

namespace {

/// The clock of all animations, turned by hand in the steps of a screen.
class HandDriver : public QAnimationDriver {
public:
    HandDriver()
    {
        install();
        // With nothing but pauses to run, Qt would turn to the real clock.
        m_unrest.setLoopCount(-1);
        m_unrest.setEndValue(1);
        m_unrest.start();
    }
    ~HandDriver() override { uninstall(); }

    qint64 elapsed() const override { return m_now; }
    /// From here on the times count.
    void setZero() { m_zero = m_now; }
    void turnTo(int milliseconds)
    {
        do {
            QCoreApplication::processEvents();
            m_now = std::min(m_now + 16, m_zero + milliseconds);
            advanceAnimation();
            QCoreApplication::processEvents();
        } while (m_now < m_zero + milliseconds);
    }

private:
    qint64 m_now = 0;
    qint64 m_zero = 0;
    QVariantAnimation m_unrest;
};

} // namespace

class OnboardingViewTest : public QObject {
    Q_OBJECT

private slots:
    void waitsForKeysThatAreMeant()
    {
        for (const bool still : {false, true}) {
            HandDriver driver;
            ShownView shown(u"Views/Onboarding/OnboardingView"_s, {{u"computerWord"_s, u"-"_s}});
            const auto value = [&](const char *name) {
                return shown.view->property(name).toDouble();
            };
            shown.engine.appearance()->setReducesMotion(still);
            QSignalSpy started(shown.view.get(), SIGNAL(getStarted()));
            QSignalSpy completed(shown.view.get(), SIGNAL(complete()));
            QMetaObject::invokeMethod(shown.view.get(), "start");
            // Each button has then been wholly there for 400 ms.
            for (const auto &[there, passed] : {std::pair(1200, &started), {2100, &completed}}) {
                const int ready = there + (still ? 0 : 300) + 400;
                for (const int at : {0, there + 1, ready - 20}) {
                    driver.turnTo(at);
                    shown.press({Qt::Key_Return, Qt::Key_Space, Qt::Key_Enter});
                    QVERIFY(passed->isEmpty());
                }
                driver.turnTo(ready + 40);
                QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, {}, {}, true);
                QCoreApplication::sendEvent(&shown.window, &held);
                QTest::keyRelease(&shown.window, Qt::Key_Space);
                QVERIFY(passed->isEmpty());
                shown.press({passed == &started ? Qt::Key_Space : Qt::Key_Return});
                QCOMPARE(passed->count(), 1);
                driver.setZero();
            }
            QVERIFY(value("glowPulse") > 0.0); // the first timetable has run on
            driver.turnTo(1000);
            QCOMPARE(value("shimmerPhase") < 1.0, !still);
            shown.window.hide();
            driver.turnTo(1100);
            QCOMPARE(value("shimmerPhase"), 1.0);
        }
    }
};

METERKIN_TEST(OnboardingViewTest);
#include "OnboardingViewTest.moc"
