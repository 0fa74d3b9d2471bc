#import <Foundation/Foundation.h>

#include "Fakes/CallLog.h"

@implementation NSFileManager (Fake)

- (BOOL)trashItemAtURL:(NSURL *)url resultingItemURL:(NSURL **)resultingUrl error:(NSError **)error
{
    CallLog::note(QStringLiteral("trash %1%2%3")
                      .arg(QString::fromUtf8(url.path.UTF8String),
                           resultingUrl == nullptr ? QString() : QStringLiteral(" resulting"),
                           error == nullptr ? QString() : QStringLiteral(" error")));
    return NO;
}

@end
