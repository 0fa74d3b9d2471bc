#import "Fakes/FakeNotificationCenter.h"

#include "Fakes/CallLog.h"
#include "Platform/macOS/UserNotificationCentre.h"
#include "Support/TestMain.h"

#include <QThread>
#include <QtTest>

namespace {

QString calls()
{
    return CallLog::take().join(u'|');
}

const QString identifier = QStringLiteral("org.meterkin.Meterkin");

UNUserNotificationCenter *systemsCentre()
{
    return [UNUserNotificationCenter currentNotificationCenter];
}

} // namespace

class UserNotificationCentreTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        [systemsCentre() forgetQuestions]; // of those that were there before
        CallLog::take();
    }

    void tellsTheDecision_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<NotificationAuthorization>("decision");
        QTest::newRow("undecided") << 0 << NotificationAuthorization::NotDetermined;
        QTest::newRow("denied") << 1 << NotificationAuthorization::Denied;
        QTest::newRow("authorised") << 2 << NotificationAuthorization::Authorized;
        QTest::newRow("provisional") << 3 << NotificationAuthorization::Provisional;
        QTest::newRow("of a later system") << 9 << NotificationAuthorization::NotDetermined;
    }
    void tellsTheDecision()
    {
        QFETCH(const int, status);
        UserNotificationCentre centre(identifier);
        std::optional<NotificationAuthorization> decision;
        centre.queryAuthorization([&decision](NotificationAuthorization told) {
            QVERIFY(QThread::currentThread() == qApp->thread());
            decision = told;
        });
        QVERIFY(CallLog::take().contains(QStringLiteral("settings")));
        [systemsCentre() answerSettings:static_cast<UNAuthorizationStatus>(status)];
        QVERIFY(!decision);
        QTRY_VERIFY(decision);
        QTEST(*decision, "decision");
    }

    void asksTheUser_data()
    {
        QTest::addColumn<bool>("granted");
        QTest::addColumn<bool>("fails");
        QTest::addColumn<AuthorizationAnswer>("answer");
        QTest::newRow("granted") << true << false << AuthorizationAnswer::Granted;
        QTest::newRow("refused") << false << false << AuthorizationAnswer::Refused;
        QTest::newRow("error") << true << true << AuthorizationAnswer::Failed;
    }
    void asksTheUser()
    {
        QFETCH(const bool, granted);
        QFETCH(const bool, fails);
        UserNotificationCentre centre(identifier);
        std::optional<AuthorizationAnswer> answer;
        centre.requestAuthorization([&answer](AuthorizationAnswer given) { answer = given; });
        QVERIFY(CallLog::take().contains(QStringLiteral("request 6")));
        NSError *error = fails ? [NSError errorWithDomain:@"test" code:1 userInfo:nil] : nil;
        [systemsCentre() answerRequest:granted error:error];
        QVERIFY(!answer);
        QTRY_VERIFY(answer);
        QTEST(*answer, "answer");
    }

    void postsAndIsClicked()
    {
        UserNotificationCentre centre(identifier);
        QCOMPARE(calls(), QStringLiteral("centre|delegate"));
        centre.post({QStringLiteral("a.b"), QStringLiteral("Größe"), QStringLiteral("91 %")});
        QCOMPARE(calls(), QStringLiteral("add a.b|Größe|91 %|1"));

        UNUserNotificationCenter *center = systemsCentre();
        CallLog::take();
        [center present];
        QCOMPARE(calls(), QStringLiteral("shown 26"));
        connect(&centre, &NotificationCentre::clicked, this, [](const QString &clicked) {
            QVERIFY(QThread::currentThread() == qApp->thread());
            CallLog::note(QStringLiteral("clicked ") + clicked);
        });
        [center click:@"a.b"];
        QCoreApplication::processEvents();
        QCOMPARE(calls(), QStringLiteral("clicked a.b|handled"));
    }

    void nothingHappensOnceItIsGone()
    {
        auto centre = std::make_unique<UserNotificationCentre>(identifier);
        const auto fail = [](auto) { QFAIL("called after the end"); };
        for (int i = 0; i < 2; ++i) {
            centre->queryAuthorization(fail);
            centre->requestAuthorization(fail);
        }
        UNUserNotificationCenter *center = systemsCentre();
        [center answerSettings:UNAuthorizationStatusAuthorized];
        [center answerRequest:YES error:nil];
        [center click:@"a.b"];
        CallLog::take();
        centre.reset();
        QCOMPARE(calls(), QStringLiteral("no delegate"));
        [center answerSettings:UNAuthorizationStatusAuthorized];
        [center answerRequest:YES error:nil];
        QCoreApplication::processEvents();
        QCOMPARE(calls(), QStringLiteral("handled"));
    }

    void outsideABundleNobodyIsAsked()
    {
        UserNotificationCentre centre(std::nullopt);
        std::optional<NotificationAuthorization> decision;
        std::optional<AuthorizationAnswer> answer;
        centre.queryAuthorization([&](NotificationAuthorization told) { decision = told; });
        centre.requestAuthorization([&](AuthorizationAnswer given) { answer = given; });
        centre.post({});
        QVERIFY(!decision && !answer);
        QTRY_VERIFY(decision && answer);
        QCOMPARE(*decision, NotificationAuthorization::NotDetermined);
        QCOMPARE(*answer, AuthorizationAnswer::Failed);
        QCOMPARE(calls(), QString());
    }
};

METERKIN_TEST(UserNotificationCentreTest);
#include "UserNotificationCentreTest.moc"
