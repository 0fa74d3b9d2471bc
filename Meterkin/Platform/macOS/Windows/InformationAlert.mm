#include "Platform/macOS/Windows/InformationAlert.h"

#include "Platform/macOS/FoundationValues.h"

#include <QCoreApplication>

#import <AppKit/AppKit.h>

void MacInformationAlert::run(const QString &messageText, const QString &informativeText)
{
    NSAlert *alert = [[NSAlert alloc] init];
    alert.messageText = foundationText(messageText);
    alert.informativeText = foundationText(informativeText);
    alert.alertStyle = NSAlertStyleInformational;
    [alert addButtonWithTitle:foundationText(
                                  QCoreApplication::translate("InformationAlertView", "OK"))];
    [NSApp unhideWithoutActivation];
    [alert runModal];
}
