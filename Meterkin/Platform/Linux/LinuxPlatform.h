#pragma once

#include "Platform/Linux/DefaultsFile.h"
#include "Platform/Linux/SessionBus.h"
#include "Platform/Linux/X11Connection.h"
#include "Platform/Platform.h"

/// The back ends of a Linux desktop.
class LinuxPlatform : public Platform {
public:
    std::unique_ptr<FanControllerConnection> makeFanController() override;
    std::unique_ptr<PageCounters> makePageCounters() override;
    std::unique_ptr<ProcessorTicks> makeProcessorTicks() override;
    std::unique_ptr<StatusItem> makeStatusItem() override;
    DefaultsStore &defaultsStore() override { return m_defaults; }

private:
    DefaultsFile m_defaults;
    X11Connection m_x11;
    SessionBus m_bus;
};
