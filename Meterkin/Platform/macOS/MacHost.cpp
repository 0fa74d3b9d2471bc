#include "Platform/macOS/MacHost.h"

// The system needs nothing of us before the kit starts.
void ProgramHost::prepare() { }

std::unique_ptr<ProgramHost> ProgramHost::make()
{
    return std::make_unique<MacHost>();
}

bool MacHost::isFirstInstance(std::function<void()> /*startedAgain*/)
{
    return true;
}

Platform &MacHost::platform()
{
    if (!m_platform)
        m_platform = std::make_unique<MacPlatform>();
    return *m_platform;
}
