#pragma once

#include "Platform/ProgramHost.h"
#include "Platform/macOS/Platform.h"

/// The program in a session of macOS.
class MacHost : public ProgramHost {
public:
    /// Always First: macOS itself starts a bundle only once.
    Claim claimInstance(std::function<void()> startedAgain) override;
    Platform &platform() override;

private:
    std::unique_ptr<MacPlatform> m_platform; ///< made by platform()
};
