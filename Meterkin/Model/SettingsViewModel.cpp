#include "Model/SettingsViewModel.h"

#include "Platform/DefaultsStore.h"
#include "Sampling/SamplingInterval.h"

#include <QVariantMap>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace {

void addDefault(QVariantMap &defaults, const QString &key, SystemMetric metric)
{
    defaults.insert(key, titleOf(metric));
}

void addDefault(QVariantMap &defaults, const QString &key, double value)
{
    defaults.insert(key, value);
}

void addDefault(QVariantMap &defaults, const QString &key, bool value)
{
    defaults.insert(key, value);
}

void addDefault(QVariantMap &, const QString &, std::nullopt_t) { }

void write(DefaultsStore &store, const QString &key, SystemMetric metric)
{
    store.setText(key, titleOf(metric));
}

void write(DefaultsStore &store, const QString &key, double value)
{
    store.setNumber(key, value);
}

void write(DefaultsStore &store, const QString &key, bool value)
{
    store.setBoolean(key, value);
}

void write(DefaultsStore &store, const QString &key, quint32 value)
{
    store.setInteger(key, value);
}

template <typename Value> Value read(const DefaultsStore &store, const QString &key);

template <> SystemMetric read(const DefaultsStore &store, const QString &key)
{
    const QString rawValue = store.text(key).value_or(QString());
    return metricFromRawValue(rawValue).value_or(SystemMetric::memoryUsage);
}

template <> double read(const DefaultsStore &store, const QString &key)
{
    return store.number(key);
}

template <> bool read(const DefaultsStore &store, const QString &key)
{
    return store.boolean(key);
}

template <> quint32 read(const DefaultsStore &store, const QString &key)
{
    const qint64 value = store.integer(key);
    if (!std::in_range<quint32>(value)) {
        std::fprintf(stderr, "[Meterkin] %s in %s must be a whole number from 0 to %u\n",
                     qPrintable(key), qPrintable(store.location()),
                     std::numeric_limits<quint32>::max());
        // A slip of the user's pen, not a fault of the program: no core dump.
        std::_Exit(EXIT_FAILURE);
    }
    return static_cast<quint32>(value);
}

template <typename Value> bool isSame(Value a, Value b)
{
    return a == b;
}

/// Two NaN are the same value, or setting one over and over would notify over and over.
bool isSame(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

template <typename Property, typename Value>
void assign(Property &property, Value value, DefaultsStore &store, const QString &key)
{
    if (!isSame(property.valueBypassingBindings(), value))
        property.setValue(value);
    // Not `value`: whoever was notified may have set another one by now.
    write(store, key, property.valueBypassingBindings());
}

} // namespace

SettingsViewModel::SettingsViewModel(DefaultsStore &store, QObject *parent)
    : QObject(parent)
    , m_store(store)
{
    registerSettingsDefaults(store);
#define LOAD(Type, name, Name, standard) m_##name = read<Type>(store, QStringLiteral(#name));
    METERKIN_SETTINGS(LOAD)
#undef LOAD
    m_storageProblem.setBinding([problem = store.storageProblem()] { return problem.value(); });
}

#define DEFINE_SETTER(Type, name, Name, standard)                                                  \
    void SettingsViewModel::set##Name(Type value)                                                  \
    {                                                                                              \
        assign(m_##name, value, m_store, QStringLiteral(#name));                                   \
    }
METERKIN_SETTINGS(DEFINE_SETTER)
#undef DEFINE_SETTER

double SettingsViewModel::intervalInEffect() const
{
    return ::intervalInEffect(updateInterval());
}

Thresholds SettingsViewModel::thresholds(SystemMetric metric) const
{
    switch (metric) {
    case SystemMetric::fanSpeed:
        return {fanSpeedGreen(), fanSpeedYellow()};
    case SystemMetric::memoryUsage:
        return {memoryGreen(), memoryYellow()};
    case SystemMetric::cpuUsage:
        return {cpuUsageGreen(), cpuUsageYellow()};
    }
    return {};
}

void registerSettingsDefaults(DefaultsStore &store)
{
    QVariantMap defaults{{QStringLiteral("onboardingShown"), false}};
#define ADD_DEFAULT(Type, name, Name, standard)                                                    \
    addDefault(defaults, QStringLiteral(#name), standard);
    METERKIN_SETTINGS(ADD_DEFAULT)
#undef ADD_DEFAULT
    store.registerDefaults(defaults);
}
