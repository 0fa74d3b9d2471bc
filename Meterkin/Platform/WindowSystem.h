#pragma once

#include "Platform/InformationAlert.h"
#include "Platform/PopoverContainer.h"
#include "Platform/WindowStyle.h"

/// What a system does its own way about windows. Needs Qt Quick. Main thread only.
class WindowSystem {
public:
    virtual ~WindowSystem() = default;

    virtual PopoverContainer &popover() = 0;
    virtual WindowStyle &windowStyle() = 0;
    virtual InformationAlert &informationAlert() = 0;
};
