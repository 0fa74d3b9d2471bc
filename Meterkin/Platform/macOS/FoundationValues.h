#pragma once

#include <QString>

#ifdef __OBJC__
#import <Foundation/Foundation.h>

NSString *_Nonnull foundationText(const QString &text);
/// Empty for nil.
QString textOf(NSString *_Nullable text);
#endif
