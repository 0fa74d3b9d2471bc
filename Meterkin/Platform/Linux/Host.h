#pragma once

#include "Platform/Linux/Platform.h"
#include "Platform/Linux/Process/SingleInstance.h"
#include "Platform/Linux/Process/TerminationSignals.h"
#include "Platform/ProgramHost.h"

/// The program in a Linux session: one instance for a user and display, ended by signals.
class LinuxHost : public ProgramHost {
public:
    LinuxHost();
    ~LinuxHost() override;

    Claim claimInstance(std::function<void()> startedAgain) override;
    Platform &platform() override;
    QString programToRestart() const override;

private:
    TerminationSignals m_signals;
    SingleInstance m_instance;
    std::unique_ptr<LinuxPlatform> m_platform; ///< once it was asked for
};
