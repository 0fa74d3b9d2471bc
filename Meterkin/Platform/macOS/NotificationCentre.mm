#include "Platform/macOS/NotificationCentre.h"

#include "Platform/macOS/FoundationValues.h"

#include <QPointer>

#include <dispatch/dispatch.h>

#include <utility>

#import <UserNotifications/UserNotifications.h>

NS_ASSUME_NONNULL_BEGIN

@interface MeterkinNotificationDelegate : NSObject <UNUserNotificationCenterDelegate> {
@public
    MacNotificationCentre *owner; // null after its destruction; main thread only
}
@end

NS_ASSUME_NONNULL_END

@implementation MeterkinNotificationDelegate

- (void)userNotificationCenter:(UNUserNotificationCenter *)center
       willPresentNotification:(UNNotification *)notification
         withCompletionHandler:(void (^)(UNNotificationPresentationOptions))handler
{
    handler(UNNotificationPresentationOptionBanner | UNNotificationPresentationOptionSound
            | UNNotificationPresentationOptionList);
}

- (void)userNotificationCenter:(UNUserNotificationCenter *)center
    didReceiveNotificationResponse:(UNNotificationResponse *)response
             withCompletionHandler:(void (^)(void))handler
{
    const QString identifier = textOf(response.notification.request.identifier);
    dispatch_async(dispatch_get_main_queue(), ^{
        if (self->owner != nullptr)
            emit self->owner->clicked(identifier);
        handler();
    });
}

@end

namespace {

/// Returns a function that any thread may call: it runs `done` once, on the main thread, if `owner`
/// still lives, and destroys it there.
template <typename Answer> auto onMainThread(QObject *owner, std::function<void(Answer)> done)
{
    return
        [owner = QPointer(owner),
         callback = std::make_shared<std::function<void(Answer)>>(std::move(done))](Answer answer) {
            dispatch_async(dispatch_get_main_queue(), ^{
                const auto answered = std::exchange(*callback, nullptr);
                if (owner && answered)
                    answered(answer);
            });
        };
}

NotificationAuthorization authorizationOf(UNAuthorizationStatus status)
{
    switch (status) {
    case UNAuthorizationStatusDenied:
        return NotificationAuthorization::Denied;
    case UNAuthorizationStatusAuthorized:
        return NotificationAuthorization::Authorized;
    case UNAuthorizationStatusProvisional:
        return NotificationAuthorization::Provisional;
    default:
        return NotificationAuthorization::NotDetermined;
    }
}

} // namespace

struct MacNotificationCentre::Objects {
    UNUserNotificationCenter *center = [UNUserNotificationCenter currentNotificationCenter];
    MeterkinNotificationDelegate *delegate = [[MeterkinNotificationDelegate alloc] init];
};

MacNotificationCentre::MacNotificationCentre(const std::optional<QString> &identifier,
                                             QObject *parent)
    : NotificationCentre(parent)
{
    if (!identifier)
        return;
    m_objects = std::make_unique<Objects>();
    m_objects->delegate->owner = this;
    m_objects->center.delegate = m_objects->delegate;
}

MacNotificationCentre::~MacNotificationCentre()
{
    if (!m_objects)
        return;
    m_objects->center.delegate = nil;
    m_objects->delegate->owner = nullptr;
}

void MacNotificationCentre::queryAuthorization(std::function<void(NotificationAuthorization)> done)
{
    const auto answer = onMainThread(this, std::move(done));
    if (!m_objects) {
        answer(NotificationAuthorization::NotDetermined);
        return;
    }
    [m_objects->center
        getNotificationSettingsWithCompletionHandler:^(UNNotificationSettings *settings) {
            answer(authorizationOf(settings.authorizationStatus));
        }];
}

void MacNotificationCentre::requestAuthorization(std::function<void(AuthorizationAnswer)> done)
{
    const auto answer = onMainThread(this, std::move(done));
    if (!m_objects) {
        answer(AuthorizationAnswer::Failed);
        return;
    }
    @autoreleasepool { // called at every reading while it is refused
        [m_objects->center
            requestAuthorizationWithOptions:UNAuthorizationOptionAlert | UNAuthorizationOptionSound
                          completionHandler:^(BOOL granted, NSError *error) {
                              if (error != nil)
                                  answer(AuthorizationAnswer::Failed);
                              else
                                  answer(granted ? AuthorizationAnswer::Granted
                                                 : AuthorizationAnswer::Refused);
                          }];
    }
}

void MacNotificationCentre::post(const NotificationRecord &record)
{
    if (!m_objects)
        return;
    UNMutableNotificationContent *content = [[UNMutableNotificationContent alloc] init];
    content.title = foundationText(record.title);
    content.body = foundationText(record.body);
    content.sound = UNNotificationSound.defaultSound;
    UNNotificationRequest *request =
        [UNNotificationRequest requestWithIdentifier:foundationText(record.identifier)
                                             content:content
                                             trigger:nil];
    [m_objects->center addNotificationRequest:request withCompletionHandler:nil];
}
