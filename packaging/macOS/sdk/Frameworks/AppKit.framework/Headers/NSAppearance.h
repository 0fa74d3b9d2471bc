#pragma once

#import <AppKit/NSApplication.h>

NS_ASSUME_NONNULL_BEGIN

typedef NSString *NSAppearanceName;

extern NSAppearanceName const NSAppearanceNameAqua;
extern NSAppearanceName const NSAppearanceNameDarkAqua;

@interface NSAppearance : NSObject
- (nullable NSAppearanceName)bestMatchFromAppearancesWithNames:
    (NSArray<NSAppearanceName> *)appearances;
- (void)performAsCurrentDrawingAppearance:(void(__attribute__((noescape)) ^)(void))block;
@end

@interface NSApplication (NSAppearanceCustomization)
@property (readonly, strong) NSAppearance *effectiveAppearance;
@end

NS_ASSUME_NONNULL_END
