#include "Platform/macOS/UserDefaultsStore.h"

#include "Platform/macOS/FoundationValues.h"
#include "Platform/macOS/MainBundle.h"

namespace {

NSUserDefaults *userDefaults()
{
    return NSUserDefaults.standardUserDefaults;
}

} // namespace

void UserDefaultsStore::registerDefaults(const QVariantMap &defaults)
{
    NSMutableDictionary<NSString *, id> *values = [NSMutableDictionary dictionary];
    for (auto it = defaults.cbegin(); it != defaults.cend(); ++it) {
        if (id value = foundationValue(it.value()))
            [values setObject:value forKey:foundationText(it.key())];
    }
    [userDefaults() registerDefaults:values];
}

std::optional<QString> UserDefaultsStore::text(const QString &key) const
{
    NSString *value = [userDefaults() stringForKey:foundationText(key)];
    if (value == nil)
        return std::nullopt;
    return textOf(value);
}

double UserDefaultsStore::number(const QString &key) const
{
    return [userDefaults() doubleForKey:foundationText(key)];
}

bool UserDefaultsStore::boolean(const QString &key) const
{
    return [userDefaults() boolForKey:foundationText(key)];
}

qint64 UserDefaultsStore::integer(const QString &key) const
{
    return [userDefaults() integerForKey:foundationText(key)];
}

void UserDefaultsStore::setText(const QString &key, const QString &value)
{
    [userDefaults() setObject:foundationText(value) forKey:foundationText(key)];
}

void UserDefaultsStore::setNumber(const QString &key, double value)
{
    [userDefaults() setDouble:value forKey:foundationText(key)];
}

void UserDefaultsStore::setBoolean(const QString &key, bool value)
{
    [userDefaults() setBool:value forKey:foundationText(key)];
}

void UserDefaultsStore::setInteger(const QString &key, qint64 value)
{
    [userDefaults() setInteger:static_cast<NSInteger>(value) forKey:foundationText(key)];
}

QString UserDefaultsStore::location() const
{
    const QString domain =
        bundleIdentifier().value_or(textOf(NSProcessInfo.processInfo.processName));
    return QStringLiteral("the defaults of ") + domain;
}
