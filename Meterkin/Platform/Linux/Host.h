#pragma once

#include "Platform/Linux/Windows/LinkOpener.h"
#include "Platform/Linux/Platform.h"
#include "Platform/Linux/SingleInstance.h"
#include "Platform/Linux/TerminationSignals.h"
#include "Platform/ProgramHost.h"

/// A program of a Linux session: one a user and display, ended by signals.
class LinuxHost : public ProgramHost {
public:
    LinuxHost();
    ~LinuxHost() override;

    Claim claimInstance(std::function<void()> startedAgain) override;
    Platform &platform() override;
    bool isRestartWanted() const override { return m_platform && m_platform->isRestartWanted(); }

private:
    TerminationSignals m_signals;
    LinkOpener m_links;
    SingleInstance m_instance;
    std::unique_ptr<LinuxPlatform> m_platform; ///< once it has been asked for
};
