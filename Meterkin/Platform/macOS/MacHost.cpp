#include "Platform/macOS/MacHost.h"

#include <QByteArray>

void ProgramHost::prepare()
{
    // Code made at run time would need an exception from the hardened runtime. The views are
    // compiled ahead of time and do without.
    qputenv("QV4_FORCE_INTERPRETER", QByteArrayLiteral("1"));
}

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
