#pragma once

#include "Platform/LoginItem.h"

/// The program as a login item, through SMAppService. Main thread only.
class MacLoginItem : public LoginItem {
public:
    bool isEnabled() const override;
    /// The same for both wishes: macOS decides whether what the user switched off stays off.
    bool registerItem(LoginItemWish wish) override;
    bool unregisterItem() override;
};
