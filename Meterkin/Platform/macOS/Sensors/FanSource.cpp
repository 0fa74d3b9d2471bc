#include "Platform/macOS/Sensors/FanSource.h"

#include "Platform/Log.h"

#include <string>
#include <utility>

MacFanSource::MacFanSource(std::unique_ptr<FanControllerConnection> connection)
    : m_smcReader(std::move(connection))
{
    if (!m_smcReader.isConnected())
        qCDebug(logSampling, "No fan controller: no fan speeds until the next start");
}

void MacFanSource::read(FanSample &sample)
{
    const std::optional<RawKey> count = m_smcReader.readRaw("FNum");
    sample.count = count ? count->bytes[0] : 0;
    sample.fans.clear();
    for (qint64 i = 0; i < sample.count; ++i) {
        const std::string fan = std::string("F").append(std::to_string(i));
        const std::optional<double> rpm = m_smcReader.readValue(fan + "Ac");
        if (!rpm)
            continue;
        const std::optional<double> minimum = m_smcReader.readValue(fan + "Mn");
        m_smcReader.loggedFanType = true; // two values of one fan tell which types this Mac uses
        const std::optional<double> maximum = m_smcReader.readValue(fan + "Mx");
        sample.fans.append({i, *rpm, minimum, maximum});
    }
}
