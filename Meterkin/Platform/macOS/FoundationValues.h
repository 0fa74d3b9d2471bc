#pragma once

#include <QString>
#include <QVariant>

#ifdef __OBJC__
#import <Foundation/Foundation.h>

// Values between Qt and Foundation, for sources of Objective-C++ only. Any thread.

NSString *_Nonnull foundationText(const QString &text);
/// Empty for nil.
QString textOf(NSString *_Nullable text);

/// Nil for what is neither a text, a truth value nor a number.
id _Nullable foundationValue(const QVariant &value);
/// Texts, truth values, numbers (qlonglong or double), lists, and dictionaries whose keys are all
/// texts; invalid for the rest, which also holds inside a list or dictionary.
QVariant valueOf(id _Nullable value);
#endif
