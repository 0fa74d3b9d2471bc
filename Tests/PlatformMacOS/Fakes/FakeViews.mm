#import <AppKit/AppKit.h>

#include "Fakes/CallLog.h"

@implementation NSResponder
@end
