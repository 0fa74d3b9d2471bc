#include "Platform/macOS/FoundationValues.h"

#include <QVariantList>
#include <QVariantMap>

#include <cstring>

namespace {

QVariant valueOfNumber(NSNumber *number)
{
    // Booleans are two singletons, and their type code is that of a char.
    if (number == [NSNumber numberWithBool:YES] || number == [NSNumber numberWithBool:NO])
        return static_cast<bool>(number.boolValue);
    if (std::strcmp(number.objCType, @encode(double)) == 0
        || std::strcmp(number.objCType, @encode(float)) == 0)
        return number.doubleValue;
    return QVariant::fromValue<qlonglong>(number.longLongValue);
}

QVariant valueOfList(NSArray *list)
{
    QVariantList values;
    for (NSUInteger i = 0; i < list.count; ++i)
        values << valueOf([list objectAtIndex:i]);
    return values;
}

QVariant valueOfDictionary(NSDictionary *dictionary)
{
    QVariantMap values;
    NSArray *keys = dictionary.allKeys;
    for (NSUInteger i = 0; i < keys.count; ++i) {
        id key = [keys objectAtIndex:i];
        if (![key isKindOfClass:[NSString class]])
            return {};
        values.insert(textOf(key), valueOf([dictionary objectForKey:key]));
    }
    return values;
}

} // namespace

NSString *foundationText(const QString &text)
{
    return [NSString stringWithCharacters:reinterpret_cast<const unichar *>(text.utf16())
                                   length:static_cast<NSUInteger>(text.size())];
}

QString textOf(NSString *text)
{
    // Not through UTF-8: it would stop at a null character and drop an unpaired surrogate.
    QString copy(static_cast<qsizetype>(text.length), Qt::Uninitialized);
    [text getCharacters:reinterpret_cast<unichar *>(copy.data())
                  range:NSMakeRange(0, static_cast<NSUInteger>(copy.size()))];
    return copy;
}

id foundationValue(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QString:
        return foundationText(value.toString());
    case QMetaType::Bool:
        return [NSNumber numberWithBool:value.toBool()];
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
        return [NSNumber numberWithLongLong:value.toLongLong()];
    case QMetaType::Double:
        return [NSNumber numberWithDouble:value.toDouble()];
    default:
        return nil;
    }
}

QVariant valueOf(id value)
{
    if ([value isKindOfClass:[NSString class]])
        return textOf(value);
    if ([value isKindOfClass:[NSNumber class]])
        return valueOfNumber(value);
    if ([value isKindOfClass:[NSArray class]])
        return valueOfList(value);
    if ([value isKindOfClass:[NSDictionary class]])
        return valueOfDictionary(value);
    return {};
}
