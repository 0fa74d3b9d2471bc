#include "Services/AlertManager.h"

#include "Model/DashboardViewModel.h"
#include "Model/MetricTraits.h"
#include "Model/SettingsViewModel.h"
#include "Platform/NotificationCentre.h"

#include <QPointer>

#include <algorithm>
#include <optional>
#include <utility>

namespace {

constexpr std::chrono::minutes Cooldown{10};

} // namespace

const QString AlertManager::identifierPrefix = QStringLiteral("org.meterkin.Meterkin.alert.");

AlertManager::AlertManager(NotificationCentre &centre, QObject *parent)
    : QObject(parent)
    , m_centre(centre)
{
    m_centre.queryAuthorization([self = QPointer(this)](NotificationAuthorization authorization) {
        if (self)
            self->m_hasPermission = authorization == NotificationAuthorization::Authorized;
    });
}

void AlertManager::requestPermission()
{
    m_centre.requestAuthorization([self = QPointer(this)](AuthorizationAnswer answer) {
        if (self)
            self->m_hasPermission = answer == AuthorizationAnswer::Granted;
    });
}

void AlertManager::checkAlerts(const SettingsViewModel &settings,
                               const DashboardViewModel &dashboard, TimePoint time)
{
    const auto isOn = [&settings](SystemMetric metric) { return settings.of(metric)->isAlertOn(); };

    // At every tick, even during a request: a lost answer must not end the alerts for good.
    if (!m_hasPermission && std::ranges::any_of(allMetrics, isOn))
        requestPermission();

    // Without permission, and for a metric that is switched off, the state does not change: what is
    // red when alerts become possible is announced then.
    if (!m_hasPermission)
        return;
    for (const SystemMetric metric : allMetrics) {
        const std::optional<double> value = dashboard.currentValue(metric);
        if (value && isOn(metric))
            evaluate(metric, *value, settings.of(metric)->yellow(), time);
    }
}

void AlertManager::evaluate(SystemMetric metric, double value, double limit, TimePoint time)
{
    const bool isAbove = value >= limit;
    const bool wasAbove = std::exchange(m_wasAboveThreshold[metric], isAbove);
    if (!isAbove || wasAbove)
        return;

    if (const auto last = m_lastAlertTime[metric]; last && *last <= time && time - *last < Cooldown)
        return; // a last time in the future means that the clock was set back
    m_lastAlertTime[metric] = time;
    postAlert(metric, value);
}

void AlertManager::postAlert(SystemMetric metric, double value)
{
    // Rounded as in the title.
    const MetricTraits &traits = traitsOf(metric);
    m_centre.post({identifierPrefix + traits.rawValue, tr("Meterkin Alert"),
                   traits.alertText(valueText(metric, value))});
}
