#include "Platform/macOS/Storage/DefaultsStore.h"

#include "Platform/macOS/FoundationValues.h"
#include "Platform/macOS/MainBundle.h"

namespace {

NSUserDefaults *userDefaults()
{
    return NSUserDefaults.standardUserDefaults;
}

} // namespace

void MacDefaultsStore::registerDefaults(const QVariantMap &defaults)
{
    NSMutableDictionary<NSString *, id> *values = [NSMutableDictionary dictionary];
    for (auto it = defaults.cbegin(); it != defaults.cend(); ++it) {
        if (id value = foundationValue(it.value()))
            [values setObject:value forKey:foundationText(it.key())];
    }
    [userDefaults() registerDefaults:values];
}

std::optional<QString> MacDefaultsStore::text(const QString &key) const
{
    NSString *value = [userDefaults() stringForKey:foundationText(key)];
    if (value == nil)
        return std::nullopt;
    return textOf(value);
}

double MacDefaultsStore::number(const QString &key) const
{
    return [userDefaults() doubleForKey:foundationText(key)];
}

bool MacDefaultsStore::boolean(const QString &key) const
{
    return [userDefaults() boolForKey:foundationText(key)];
}

qint64 MacDefaultsStore::integer(const QString &key) const
{
    return [userDefaults() integerForKey:foundationText(key)];
}

void MacDefaultsStore::setText(const QString &key, const QString &value)
{
    [userDefaults() setObject:foundationText(value) forKey:foundationText(key)];
}

void MacDefaultsStore::setNumber(const QString &key, double value)
{
    [userDefaults() setDouble:value forKey:foundationText(key)];
}

void MacDefaultsStore::setBoolean(const QString &key, bool value)
{
    [userDefaults() setBool:value forKey:foundationText(key)];
}

void MacDefaultsStore::setInteger(const QString &key, qint64 value)
{
    [userDefaults() setInteger:static_cast<NSInteger>(value) forKey:foundationText(key)];
}

QString MacDefaultsStore::location() const
{
    const QString domain =
        bundleIdentifier().value_or(textOf(NSProcessInfo.processInfo.processName));
    return QStringLiteral("the defaults of ") + domain;
}
