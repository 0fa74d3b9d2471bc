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
        m_a.setValue(0);
        m_b.setValue(0);
        m_calls = 0;
        m_scope = std::make_unique<ObservationScope>(
            [this] {
                m_a.value();
                m_b.value();
            },
            [this] { ++m_calls; });
        QCoreApplication::processEvents();
        QCOMPARE(m_calls, 0);
    }
    void cleanup() { m_scope.reset(); }

    void manyChangesAreOneCall()
    {
        m_a = 1;
        m_b = 1;
        m_a = 2;
        QCOMPARE(m_calls, 0);
        QCoreApplication::processEvents();
        QCOMPARE(m_calls, 1);
        QCoreApplication::processEvents();
        QCOMPARE(m_calls, 1);

        m_b = 2;
        QCoreApplication::processEvents();
        QCOMPARE(m_calls, 2);
    }

    void equalWritesAreNoChange()
    {
        m_a = 0;
        QCoreApplication::processEvents();
        QCOMPARE(m_calls, 0);
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

    void followsWhatIsReadNow()
    {
        QProperty<bool> first{true};
        int calls = 0;
        ObservationScope scope([&] { first.value() ? m_a.value() : m_b.value(); },
                               [&] { ++calls; });
        first = false;
        QCoreApplication::processEvents();
        QCOMPARE(calls, 1);
        m_a = 1;
        QCoreApplication::processEvents();
        QCOMPARE(calls, 1);
        m_b = 1;
        QCoreApplication::processEvents();
        QCOMPARE(calls, 2);
    }

    void aGoneScopeIsSilent()
    {
        m_a = 1;
        m_scope.reset();
        m_b = 1;
        QCoreApplication::processEvents();
        QCOMPARE(m_calls, 0);
    }

    void outlivesWhatItWatches()
    {
        auto watched = std::make_unique<QProperty<int>>(0);
        int calls = 0;
        ObservationScope scope(
            [&] {
                if (watched)
                    watched->value();
                m_a.value();
            },
            [&] { ++calls; });
        watched.reset();
        m_a = 1;
        QCoreApplication::processEvents();
        QCOMPARE(calls, 1);
    }

private:
    QProperty<int> m_a;
    QProperty<int> m_b;
    int m_calls = 0;
    std::unique_ptr<ObservationScope> m_scope;
};

METERKIN_TEST(ObservationScopeTest);
#include "ObservationScopeTest.moc"
