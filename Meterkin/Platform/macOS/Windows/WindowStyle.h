#pragma once

#include "Platform/WindowStyle.h"

/// Windows with the title bar of macOS.
class MacWindowStyle : public WindowStyle {
public:
    void makeTitled(QQuickWindow &window) override;
    TitleBar makeOnboarding(QQuickWindow &window) override;
    void present(QQuickWindow &window) override;
    void presentUnasked(QQuickWindow &window) override;
};
