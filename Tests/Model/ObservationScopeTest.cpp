#include "Model/ObservationScope.h"
#include "Support/TestMain.h"

#include <QtTest>

/// Which changes lead to a call, and how often.
class ObservationScopeTest : public QObject {
    Q_OBJECT

private slots:
    void callsOnceForManyChanges()
    {
        QProperty<bool> readsB{false};
        QProperty<int> a{0};
        QProperty<int> b{0};
        int calls = 0;
        auto scope = std::make_unique<ObservationScope>(
            [&] { readsB.value() ? b.value() : a.value(); }, [&] { ++calls; });
        const auto callsNow = [&] {
            QCoreApplication::processEvents();
            return calls;
        };
        a = 1;
        readsB = true;
        a = 2;
        QCOMPARE(calls, 0);
        QCOMPARE(callsNow(), 1);

        a = 3; // no longer read
        QCOMPARE(callsNow(), 1);
        b = 1;
        QCOMPARE(callsNow(), 2);

        b = 2;
        scope.reset();
        b = 3;
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
};

METERKIN_TEST(ObservationScopeTest);
#include "ObservationScopeTest.moc"
