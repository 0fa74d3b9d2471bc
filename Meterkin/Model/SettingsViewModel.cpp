#include "Model/SettingsViewModel.h"

#include "Model/MetricTraits.h"
#include "Sampling/Interval.h"

#include <QVariantMap>

namespace {

void addDefault(QVariantMap &defaults, const QString &key, SystemMetric metric)
{
    defaults.insert(key, traitsOf(metric).rawValue);
}

template <typename Value> void addDefault(QVariantMap &defaults, const QString &key, Value value)
{
    defaults.insert(key, value);
}

void addDefault(QVariantMap &, const QString &, std::nullopt_t) { }

} // namespace

SettingsViewModel::SettingsViewModel(DefaultsStore &store, QObject *parent)
    : QObject(parent)
    , m_store(store)
{
    registerSettingsDefaults(store);
#define LOAD(Type, name, Name, standard) m_##name = readSetting<Type>(store, QStringLiteral(#name));
    METERKIN_SETTINGS(LOAD)
#undef LOAD
    for (const SystemMetric metric : allMetrics)
        m_ofMetrics[metric] = new MetricSettings(metric, store, this);
    m_storageProblem.setBinding([problem = store.storageProblem()] { return problem.value(); });
}

#define DEFINE_SETTER(Type, name, Name, standard)                                                  \
    void SettingsViewModel::set##Name(Type value)                                                  \
    {                                                                                              \
        assignSetting(m_##name, value, m_store, QStringLiteral(#name));                            \
    }
METERKIN_SETTINGS(DEFINE_SETTER)
#undef DEFINE_SETTER

double SettingsViewModel::intervalInEffect() const
{
    return ::intervalInEffect(updateInterval());
}

Thresholds SettingsViewModel::thresholds(SystemMetric metric) const
{
    const MetricSettings &settings = *of(metric);
    return {settings.green(), settings.yellow()};
}

void registerSettingsDefaults(DefaultsStore &store)
{
    QVariantMap defaults{{QStringLiteral("onboardingShown"), false}};
#define ADD_DEFAULT(Type, name, Name, standard)                                                    \
    addDefault(defaults, QStringLiteral(#name), standard);
    METERKIN_SETTINGS(ADD_DEFAULT)
#undef ADD_DEFAULT
    for (const SystemMetric metric : allMetrics)
        MetricSettings::addDefaults(metric, defaults);
    store.registerDefaults(defaults);
}
