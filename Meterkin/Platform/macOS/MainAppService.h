#pragma once

#include "Platform/LoginItem.h"

/// The program itself as a login item of the system's. Main thread only.
class MainAppService : public LoginItem {
public:
    bool isEnabled() const override;
    /// Alike for both wishes: whether what the user switched off stays off, the system decides.
    bool registerItem(LoginItemWish wish) override;
    bool unregisterItem() override;
};
