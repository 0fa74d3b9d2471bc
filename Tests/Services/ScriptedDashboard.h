#pragma once

#include "Model/DashboardViewModel.h"
#include "Sampling/MetricCollector.h"
#include "Support/ScriptedVitals.h"

#include <QEventLoop>

/// Beside the fan of the vitals a second one that stands still.
class TwoVitalFans : public VitalFans {
public:
    using VitalFans::VitalFans;
    bool call(const ControllerRecord &request, ControllerRecord &reply) override
    {
        const bool isRead = VitalFans::call(request, reply);
        if (request.key == fourCharacterCode("FNum"))
            reply.data[0] = 2;
        else if (request.key == fourCharacterCode("F1Ac"))
            reply.data = {};
        return isRead;
    }
};

/// A dashboard over a machine that reports what the test says.
class ScriptedDashboard {
public:
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
    std::shared_ptr<Vitals> m_vitals = std::make_shared<Vitals>();
    MetricCollector m_collector{std::make_unique<TwoVitalFans>(m_vitals),
                                std::make_unique<VitalPages>(m_vitals),
                                std::make_unique<VitalTicks>(m_vitals)};
    DashboardViewModel m_dashboard{m_collector};
};
