#pragma once

#include "Platform/WindowSystem.h"
#include "Platform/macOS/Windows/InformationAlert.h"
#include "Platform/macOS/Windows/PopoverContainer.h"
#include "Platform/macOS/Windows/WindowStyle.h"

#include <utility>

/// Windows on a Mac.
class MacWindowSystem : public WindowSystem {
public:
    explicit MacWindowSystem(MacPopoverContainer::FindButton findButton)
        : m_popover(std::move(findButton))
    {
    }

    PopoverContainer &popover() override { return m_popover; }
    WindowStyle &windowStyle() override { return m_style; }
    InformationAlert &informationAlert() override { return m_alert; }

private:
    MacPopoverContainer m_popover;
    MacWindowStyle m_style;
    MacInformationAlert m_alert;
};
