#pragma once

#include "Platform/macOS/Sensors/FanControllerConnection.h"

/// The system management controller, through the user client of its driver.
class SMCUserClient : public FanControllerConnection {
public:
    bool open() override;
    bool call(const ControllerRecord &request, ControllerRecord &reply) override;
    void close() override;

private:
    std::uint32_t m_connection = 0;
};
