#pragma once

#include "Platform/ProgramHost.h"
#include "Platform/macOS/MacPlatform.h"

/// A program of a Mac's session.
class MacHost : public ProgramHost {
public:
    /// Always the first: the system starts a bundle once, unless it is told otherwise.
    Claim claimInstance(std::function<void()> startedAgain) override;
    Platform &platform() override;

private:
    std::unique_ptr<MacPlatform> m_platform; ///< once it has been asked for
};
