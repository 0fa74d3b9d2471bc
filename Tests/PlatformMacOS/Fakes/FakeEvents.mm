#import "Fakes/FakeEvents.h"

#include "Fakes/CallLog.h"

#include <Block.h>
#include <utility>

namespace {

NSEvent * (^handler)(NSEvent *) = nullptr;

} // namespace

@interface FakeKeyEvent : NSEvent {
@public
    unsigned short m_keyCode;
    NSUInteger m_flags;
}
@end

@implementation NSEvent
@dynamic keyCode, modifierFlags;
+ (NSPoint)mouseLocation
{
    return FakeEvents::mouseLocation;
}
+ (NSUInteger)pressedMouseButtons
{
    return FakeEvents::pressedButtons;
}
+ (id)addLocalMonitorForEventsMatchingMask:(NSEventMask)mask handler:(NSEvent * (^)(NSEvent *))block
{
    CallLog::note(QStringLiteral("addLocalMonitor %1").arg(mask));
    handler = Block_copy(block);
    return [[NSObject alloc] init];
}
+ (void)removeMonitor:(id)monitor
{
    CallLog::note(QStringLiteral("removeMonitor %1").arg(monitor != nil));
    // At once, even when it runs: nobody promises more.
    Block_release(std::exchange(handler, nullptr));
}
@end

@implementation FakeKeyEvent
- (unsigned short)keyCode
{
    return m_keyCode;
}
- (NSEventModifierFlags)modifierFlags
{
    return m_flags;
}
@end

bool FakeEvents::swallows(unsigned short keyCode, NSUInteger flags)
{
    if (handler == nullptr)
        return false;
    FakeKeyEvent *event = [[FakeKeyEvent alloc] init];
    event->m_keyCode = keyCode;
    event->m_flags = flags;
    return handler(event) != event;
}
