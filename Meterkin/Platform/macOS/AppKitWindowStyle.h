#pragma once

#include "Platform/WindowStyle.h"

/// Windows of the desktop, with the system's own title bar.
class AppKitWindowStyle : public WindowStyle {
public:
    void makeTitled(QQuickWindow &window) override;
    TitleBar makeOnboarding(QQuickWindow &window) override;
    void present(QQuickWindow &window) override;
    void presentUnasked(QQuickWindow &window) override;
};
