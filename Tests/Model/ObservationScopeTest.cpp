#include "Model/ObservationScope.h"
#include "Support/TestMain.h"

#include <QCoreApplication>
#include <QtTest>

#include <memory>

/// Who is told of which changes, and how often.
class ObservationScopeTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_useB = false;
        m_a.setValue(0);
        m_b.setValue(0);
        m_calls = 0;
        m_scope = std::make_unique<ObservationScope>(
            [this] { m_useB.value() ? m_b.value() : m_a.value(); }, [this] { ++m_calls; });
        QCOMPARE(callsNow(), 0);
    }
    void cleanup() { m_scope.reset(); }

    void tellsOnceABurst()
    {
        m_a = 0; // no change
        QCOMPARE(callsNow(), 0);
        m_a = 1;
        m_useB = true;
        m_a = 2;
        QCOMPARE(m_calls, 0);
        QCOMPARE(callsNow(), 1);
        QCOMPARE(callsNow(), 1);

        // It follows what was read last.
        m_a = 3;
        QCOMPARE(callsNow(), 1);
        m_b = 1;
        QCOMPARE(callsNow(), 2);
    }

    void changesByTheHandlerAreSeen()
    {
        QProperty<int> value{0};
        QList<int> seen;
        ObservationScope scope([&] { value.value(); },
                               [&] {
                                   seen.append(value.value());
                                   if (value.value() < 3)
                                       value = value.value() + 1;
                               });
        value = 1;
        QTRY_COMPARE(seen, (QList<int>{1, 2, 3}));
    }

    void aGoneScopeIsSilent()
    {
        m_a = 1;
        m_scope.reset();
        m_a = 2;
        QCOMPARE(callsNow(), 0);
    }

private:
    int callsNow() const
    {
        QCoreApplication::processEvents();
        return m_calls;
    }

    QProperty<bool> m_useB;
    QProperty<int> m_a;
    QProperty<int> m_b;
    int m_calls = 0;
    std::unique_ptr<ObservationScope> m_scope;
};

METERKIN_TEST(ObservationScopeTest);
#include "ObservationScopeTest.moc"
