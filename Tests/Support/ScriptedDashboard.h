#pragma once

#include "Model/DashboardViewModel.h"
#include "Sampling/MetricCollector.h"
#include "Support/ScriptedVitals.h"

#include <QEventLoop>

/// A dashboard over a machine that reports what the test says.
class ScriptedDashboard {
public:
    /// The size of the memory is read here and not again.
    explicit ScriptedDashboard(const Vitals &vitals = {})
        : m_vitals(std::make_shared<Vitals>(vitals))
    {
    }

    DashboardViewModel &dashboard() { return m_dashboard; }

    /// Lets the machine report the values and the dashboard take them in.
    void report(const Vitals &vitals)
    {
        *m_vitals = vitals;
        QEventLoop sampled;
        m_collector.onTick = [&sampled] { sampled.quit(); };
        m_collector.start(86400.0);
        sampled.exec();
        m_dashboard.update();
    }

private:
    std::shared_ptr<Vitals> m_vitals;
    MetricCollector m_collector{makeSources(m_vitals)};
    DashboardViewModel m_dashboard{m_collector};
};
