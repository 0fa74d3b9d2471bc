#pragma once

#include "Platform/LoginItem.h"

/// The program itself as a login item of the system's. Main thread only.
class MainAppService : public LoginItem {
public:
    bool isEnabled() const override;
    /// Alike for both wishes: what the user switched off, the system refuses by itself.
    bool registerItem(LoginItemWish wish) override;
    bool unregisterItem() override;
};
