#pragma once

#include "Platform/FanSource.h"
#include "Platform/macOS/Sensors/SMCReader.h"

/// The fans of the system management controller. They have no names.
class MacFanSource : public FanSource {
public:
    explicit MacFanSource(std::unique_ptr<FanControllerConnection> connection);

    void read(FanSample &sample) override;

private:
    SMCReader m_smcReader;
};
