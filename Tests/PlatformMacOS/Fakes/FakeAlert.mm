#import <AppKit/AppKit.h>

#include "Fakes/CallLog.h"
#include "Platform/macOS/FoundationValues.h"

@implementation NSAlert
@dynamic messageText, informativeText, alertStyle;
- (void)setMessageText:(NSString *)text
{
    CallLog::note(QStringLiteral("messageText ") + textOf(text));
}
- (void)setInformativeText:(NSString *)text
{
    CallLog::note(QStringLiteral("informativeText ") + textOf(text));
}
- (void)setAlertStyle:(NSAlertStyle)style
{
    CallLog::note(QStringLiteral("alertStyle %1").arg(style));
}
- (NSButton *)addButtonWithTitle:(NSString *)title
{
    CallLog::note(QStringLiteral("addButtonWithTitle ") + textOf(title));
    return nil;
}
- (NSModalResponse)runModal
{
    CallLog::note(QStringLiteral("runModal"));
    return 1000;
}
@end
