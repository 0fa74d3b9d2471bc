#include "Platform/macOS/NotificationCentre.h"
#include "Support/TestMain.h"

#include <QThread>
#include <QtTest>

#include <Block.h>
#include <dispatch/dispatch.h>

#include <thread>

#import <UserNotifications/UserNotifications.h>

namespace {

using SettingsHandler = void (^)(UNNotificationSettings *);
using RequestHandler = void (^)(BOOL, NSError *);

// What the system holds. The classes below have no state of their own.
id centerDelegate;
SettingsHandler settingsHandler;
RequestHandler requestHandler;
QStringList events;

/// The system answers on threads of its own. Returns when it has.
void onAnotherThread(const std::function<void()> &work)
{
    std::thread([&work] {
        @autoreleasepool {
            work();
        }
    }).join();
}

void answerSettings()
{
    onAnotherThread([] { settingsHandler([[UNNotificationSettings alloc] init]); });
}

void answerRequest(bool granted, NSError *error)
{
    onAnotherThread([=] { requestHandler(granted, error); });
}

void click()
{
    onAnotherThread([] {
        UNNotificationResponse *response = nil;
        [centerDelegate userNotificationCenter:[UNUserNotificationCenter currentNotificationCenter]
                didReceiveNotificationResponse:response
                         withCompletionHandler:^{ events << QStringLiteral("handled"); }];
    });
}

} // namespace

struct dispatch_queue_s {
} mainQueue;

dispatch_queue_t dispatch_get_main_queue()
{
    return &mainQueue;
}

void dispatch_async(dispatch_queue_t, dispatch_block_t block)
{
    const auto copy = Block_copy(block);
    QMetaObject::invokeMethod(
        QCoreApplication::instance(),
        [copy] {
            copy();
            Block_release(copy);
        },
        Qt::QueuedConnection);
}

// Of these the cases reach only some methods.
#pragma clang diagnostic ignored "-Wincomplete-implementation"
#pragma clang diagnostic ignored "-Wobjc-property-implementation"

@implementation UNNotificationSettings
- (UNAuthorizationStatus)authorizationStatus
{
    return UNAuthorizationStatusProvisional;
}
@end

@implementation UNNotificationSound
@end
@implementation UNNotificationContent
@end
@implementation UNMutableNotificationContent
@dynamic title, body, sound;
@end
@implementation UNNotificationRequest
@dynamic identifier;
@end

@implementation UNUserNotificationCenter
@dynamic delegate;
+ (UNUserNotificationCenter *)currentNotificationCenter
{
    return [[UNUserNotificationCenter alloc] init];
}
- (void)setDelegate:(id<UNUserNotificationCenterDelegate>)delegate
{
    centerDelegate = delegate;
}
- (void)getNotificationSettingsWithCompletionHandler:(SettingsHandler)handler
{
    settingsHandler = Block_copy(handler);
}
- (void)requestAuthorizationWithOptions:(UNAuthorizationOptions)options
                      completionHandler:(RequestHandler)handler
{
    requestHandler = Block_copy(handler);
}
@end

/// Answers come on other threads, and late: they have to reach the main thread, or nobody.
class NotificationCentreTest : public QObject {
    Q_OBJECT

private slots:
    void init() { events.clear(); }

    void answersOnTheMainThread()
    {
        MacNotificationCentre centre(m_identifier);
        std::optional<NotificationAuthorization> decision;
        std::optional<AuthorizationAnswer> answer;
        centre.queryAuthorization([&decision](NotificationAuthorization told) {
            QVERIFY(QThread::currentThread() == QCoreApplication::instance()->thread());
            decision = told;
        });
        centre.requestAuthorization([&answer](AuthorizationAnswer given) { answer = given; });
        answerSettings();
        answerRequest(true, [NSError errorWithDomain:@"test" code:1 userInfo:nil]);
        QVERIFY(!decision && !answer);
        QTRY_VERIFY(decision && answer);
        QCOMPARE(*decision, NotificationAuthorization::Provisional);
        QCOMPARE(*answer, AuthorizationAnswer::Failed); // an error outweighs a yes
    }

    void isClicked()
    {
        MacNotificationCentre centre(m_identifier);
        connect(&centre, &NotificationCentre::clicked, this, [] {
            QVERIFY(QThread::currentThread() == QCoreApplication::instance()->thread());
            events << QStringLiteral("clicked");
        });
        click();
        QCOMPARE(events, QStringList());
        QCoreApplication::processEvents();
        QCOMPARE(events.join(u'|'), QStringLiteral("clicked|handled"));
    }

    void nothingHappensAfterItsEnd()
    {
        auto centre = std::make_unique<MacNotificationCentre>(m_identifier);
        connect(centre.get(), &NotificationCentre::clicked, this, [] { QFAIL("clicked"); });
        const auto fail = [](auto) { QFAIL("called after the end"); };
        centre->queryAuthorization(fail);
        centre->requestAuthorization(fail);
        answerSettings();
        click();
        centre.reset();
        answerRequest(true, nil); // and one that comes only now
        QCoreApplication::processEvents();
        QCOMPARE(events, QStringList{QStringLiteral("handled")});
        QVERIFY(centerDelegate == nil);
    }

    void failsWithoutABundle()
    {
        MacNotificationCentre centre(std::nullopt);
        std::optional<NotificationAuthorization> decision;
        std::optional<AuthorizationAnswer> answer;
        centre.queryAuthorization([&](NotificationAuthorization told) { decision = told; });
        centre.requestAuthorization([&](AuthorizationAnswer given) { answer = given; });
        centre.post({}); // would end here if it reached for the system's centre
        QVERIFY(!decision && !answer);
        QTRY_VERIFY(decision && answer);
        QCOMPARE(*decision, NotificationAuthorization::NotDetermined);
        QCOMPARE(*answer, AuthorizationAnswer::Failed);
        QCOMPARE(events, QStringList());
    }

private:
    const QString m_identifier = QStringLiteral("org.meterkin.Meterkin");
};

METERKIN_TEST(NotificationCentreTest);
#include "NotificationCentreTest.moc"
