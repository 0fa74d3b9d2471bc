#pragma once

#include "Platform/Linux/Windows/Dialogs/InformationAlert.h"
#include "Platform/Linux/Windows/LinkOpener.h"
#include "Platform/Linux/Windows/PopoverContainer.h"
#include "Platform/Linux/Windows/WindowStyle.h"
#include "Platform/WindowSystem.h"

/// Windows on a Linux desktop.
class LinuxWindowSystem : public WindowSystem {
public:
    /// Both outlive it.
    LinuxWindowSystem(DisplayServer &displayServer, const DesktopAppearance &appearance)
        : m_popover(displayServer)
        , m_style(displayServer)
        , m_alert(m_style, appearance)
    {
    }

    PopoverContainer &popover() override { return m_popover; }
    WindowStyle &windowStyle() override { return m_style; }
    InformationAlert &informationAlert() override { return m_alert; }

private:
    LinkOpener m_links;
    LinuxPopoverContainer m_popover;
    LinuxWindowStyle m_style;
    LinuxInformationAlert m_alert;
};
