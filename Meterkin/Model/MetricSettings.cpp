#include "Model/MetricSettings.h"

#include "Model/MetricTraits.h"

namespace {

QString greenKey(SystemMetric metric)
{
    return traitsOf(metric).settingsName + QStringLiteral("Green");
}

QString yellowKey(SystemMetric metric)
{
    return traitsOf(metric).settingsName + QStringLiteral("Yellow");
}

} // namespace

MetricSettings::MetricSettings(SystemMetric metric, DefaultsStore &store, QObject *parent)
    : QObject(parent)
    , m_metric(metric)
    , m_store(store)
{
    m_green = readSetting<double>(store, greenKey(metric));
    m_yellow = readSetting<double>(store, yellowKey(metric));
    m_isAlertOn = readSetting<bool>(store, traitsOf(metric).alertSetting);
}

QString MetricSettings::name() const
{
    return traitsOf(m_metric).name();
}

void MetricSettings::setGreen(double value)
{
    assignSetting(m_green, value, m_store, greenKey(m_metric));
}

void MetricSettings::setYellow(double value)
{
    assignSetting(m_yellow, value, m_store, yellowKey(m_metric));
}

void MetricSettings::setIsAlertOn(bool value)
{
    assignSetting(m_isAlertOn, value, m_store, traitsOf(m_metric).alertSetting);
}

void MetricSettings::addDefaults(SystemMetric metric, QVariantMap &defaults)
{
    const MetricTraits &traits = traitsOf(metric);
    defaults.insert(greenKey(metric), traits.standard.green);
    defaults.insert(yellowKey(metric), traits.standard.yellow);
    defaults.insert(traits.alertSetting, false);
}
