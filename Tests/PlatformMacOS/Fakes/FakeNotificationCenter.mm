#import "Fakes/FakeNotificationCenter.h"

#include "Fakes/CallLog.h"

#include <Block.h>

#include <deque>
#include <thread>

namespace {

using SettingsHandler = void (^)(UNNotificationSettings *);
using RequestHandler = void (^)(BOOL, NSError *);

std::deque<SettingsHandler> settingsHandlers;
std::deque<RequestHandler> requestHandlers;
id centerDelegate;

QString textFrom(NSString *text)
{
    return QString::fromUtf8(text.UTF8String);
}

void onAnotherThread(void (^work)(void))
{
    std::thread([work] {
        @autoreleasepool {
            work();
        }
    }).join();
}

template <typename Handler> Handler takeFirst(std::deque<Handler> &handlers)
{
    Handler handler = handlers.front();
    handlers.pop_front();
    return handler;
}

} // namespace

// The runtime wants instance variables where a class is declared: in classes below Qt's.

@interface FakeSettings : UNNotificationSettings {
@public
    UNAuthorizationStatus m_status;
}
@end

@implementation UNNotificationSettings
@dynamic authorizationStatus;
@end

@implementation FakeSettings
- (UNAuthorizationStatus)authorizationStatus
{
    return m_status;
}
@end

@implementation UNNotificationSound
+ (UNNotificationSound *)defaultSound
{
    static UNNotificationSound *sound = [[UNNotificationSound alloc] init];
    return sound;
}
@end

@interface FakeContent : UNMutableNotificationContent {
@public
    NSString *m_title;
    NSString *m_body;
    UNNotificationSound *m_sound;
}
@end

@implementation UNNotificationContent
@end

@implementation UNMutableNotificationContent
@dynamic title, body, sound;
+ (id)allocWithZone:(NSZone *)zone
{
    return NSAllocateObject([FakeContent class], 0, zone);
}
@end

@implementation FakeContent
- (void)setTitle:(NSString *)title
{
    m_title = [title copy];
}
- (void)setBody:(NSString *)body
{
    m_body = [body copy];
}
- (void)setSound:(UNNotificationSound *)sound
{
    m_sound = sound;
}
@end

@interface FakeRequest : UNNotificationRequest {
@public
    NSString *m_identifier;
    FakeContent *m_content;
    UNNotificationTrigger *m_trigger;
}
@end

@implementation UNNotificationRequest
@dynamic identifier;
+ (instancetype)requestWithIdentifier:(NSString *)identifier
                              content:(UNNotificationContent *)content
                              trigger:(UNNotificationTrigger *)trigger
{
    FakeRequest *request = [[FakeRequest alloc] init];
    request->m_identifier = [identifier copy];
    request->m_content = static_cast<FakeContent *>(content);
    request->m_trigger = trigger;
    return request;
}
@end

@implementation FakeRequest
- (NSString *)identifier
{
    return m_identifier;
}
@end

@interface FakeNotification : UNNotification {
@public
    FakeRequest *m_request;
}
@end

@implementation UNNotification
@dynamic request;
@end

@implementation FakeNotification
- (UNNotificationRequest *)request
{
    return m_request;
}
@end

@interface FakeResponse : UNNotificationResponse {
@public
    UNNotification *m_notification;
}
@end

@implementation UNNotificationResponse
@dynamic notification;
@end

@implementation FakeResponse
- (UNNotification *)notification
{
    return m_notification;
}
@end

@implementation UNUserNotificationCenter

+ (UNUserNotificationCenter *)currentNotificationCenter
{
    CallLog::note(QStringLiteral("centre"));
    static UNUserNotificationCenter *center = [[UNUserNotificationCenter alloc] init];
    return center;
}

- (id<UNUserNotificationCenterDelegate>)delegate
{
    return centerDelegate;
}

- (void)setDelegate:(id<UNUserNotificationCenterDelegate>)delegate
{
    CallLog::note(delegate == nil ? QStringLiteral("no delegate") : QStringLiteral("delegate"));
    centerDelegate = delegate;
}

- (void)getNotificationSettingsWithCompletionHandler:(SettingsHandler)handler
{
    CallLog::note(QStringLiteral("settings"));
    settingsHandlers.push_back(Block_copy(handler));
}

- (void)requestAuthorizationWithOptions:(UNAuthorizationOptions)options
                      completionHandler:(RequestHandler)handler
{
    CallLog::note(QStringLiteral("request %1").arg(options));
    requestHandlers.push_back(Block_copy(handler));
}

- (void)addNotificationRequest:(UNNotificationRequest *)request
         withCompletionHandler:(void (^)(NSError *))handler
{
    const FakeRequest *added = static_cast<FakeRequest *>(request);
    const FakeContent *content = added->m_content;
    const bool isPlain = content->m_sound == UNNotificationSound.defaultSound
        && added->m_trigger == nil && handler == nil;
    CallLog::note(QStringLiteral("add %1|%2|%3|%4")
                      .arg(textFrom(added->m_identifier), textFrom(content->m_title),
                           textFrom(content->m_body))
                      .arg(isPlain));
}

- (void)forgetQuestions
{
    settingsHandlers.clear();
    requestHandlers.clear();
}

- (void)answerSettings:(UNAuthorizationStatus)status
{
    onAnotherThread(^{
        SettingsHandler handler = takeFirst(settingsHandlers);
        FakeSettings *settings = [[FakeSettings alloc] init];
        settings->m_status = status;
        handler(settings);
        Block_release(handler);
    });
}

- (void)answerRequest:(BOOL)granted error:(NSError *)error
{
    onAnotherThread(^{
        RequestHandler handler = takeFirst(requestHandlers);
        handler(granted, error);
        Block_release(handler);
    });
}

- (UNNotification *)notificationOf:(NSString *)identifier
{
    FakeNotification *notification = [[FakeNotification alloc] init];
    notification->m_request = [[FakeRequest alloc] init];
    notification->m_request->m_identifier = identifier;
    return notification;
}

- (void)present
{
    onAnotherThread(^{
        [centerDelegate userNotificationCenter:self
                       willPresentNotification:[self notificationOf:@"any"]
                         withCompletionHandler:^(UNNotificationPresentationOptions options) {
                             CallLog::note(QStringLiteral("shown %1").arg(options));
                         }];
    });
}

- (void)click:(NSString *)identifier
{
    onAnotherThread(^{
        FakeResponse *response = [[FakeResponse alloc] init];
        response->m_notification = [self notificationOf:identifier];
        [centerDelegate userNotificationCenter:self
                didReceiveNotificationResponse:response
                         withCompletionHandler:^{ CallLog::note(QStringLiteral("handled")); }];
    });
}

@end
