#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

extern NSAttributedStringKey const NSFontAttributeName;
extern NSAttributedStringKey const NSForegroundColorAttributeName;

NS_ASSUME_NONNULL_END
