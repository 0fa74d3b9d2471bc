#include "Platform/macOS/FoundationValues.h"

NSString *foundationText(const QString &text)
{
    return [NSString stringWithCharacters:reinterpret_cast<const unichar *>(text.utf16())
                                   length:static_cast<NSUInteger>(text.size())];
}

QString textOf(NSString *text)
{
    return QString::fromUtf8(text.UTF8String);
}
