#pragma once

#include <QString>
#include <QVariant>

#ifdef __OBJC__
#import <Foundation/Foundation.h>

// Conversions between types of Qt and of Foundation, for Objective-C++ only. Any thread.

NSString *_Nonnull foundationText(const QString &text);
/// Empty for nil.
QString textOf(NSString *_Nullable text);

/// Nil unless it is a string, a boolean or a number.
id _Nullable foundationValue(const QVariant &value);
/// Strings, booleans, numbers (qlonglong or double), lists, and dictionaries whose keys are all
/// strings, with their elements likewise. Invalid for anything else.
QVariant valueOf(id _Nullable value);
#endif
