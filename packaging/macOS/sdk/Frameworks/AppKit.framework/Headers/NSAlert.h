#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@class NSButton;

typedef NSInteger NSModalResponse;

typedef NS_ENUM(NSUInteger, NSAlertStyle) {
    NSAlertStyleInformational = 1,
};

@interface NSAlert : NSObject
@property (copy) NSString *messageText;
@property (copy) NSString *informativeText;
@property NSAlertStyle alertStyle;
- (NSButton *)addButtonWithTitle:(NSString *)title;
- (NSModalResponse)runModal;
@end

NS_ASSUME_NONNULL_END
