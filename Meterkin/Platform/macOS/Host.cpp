#include "Platform/macOS/Host.h"

QByteArrayList ProgramHost::prepare()
{
    // By default Qt activates the program at its start, but this one lives in the menu bar.
    qputenv("QT_MAC_DISABLE_FOREGROUND_APPLICATION_TRANSFORM", QByteArrayLiteral("1"));
    return {};
}

std::unique_ptr<ProgramHost> ProgramHost::make()
{
    return std::make_unique<MacHost>();
}

ProgramHost::Claim MacHost::claimInstance(std::function<void()> /*startedAgain*/)
{
    return Claim::First;
}

Platform &MacHost::platform()
{
    if (!m_platform)
        m_platform = std::make_unique<MacPlatform>();
    return *m_platform;
}
