#pragma once

#include <functional>

/// The windows beside the dashboard. Main thread only.
class ApplicationWindows {
public:
    virtual ~ApplicationWindows() = default;

    /// Brings the one settings window to the front, building it the first time.
    virtual void openSettings() = 0;
    /// Opens the onboarding; `completed` is called when the user finishes it, not when he closes
    /// it.
    virtual void showOnboarding(std::function<void()> completed) = 0;
    virtual void closeOnboarding() = 0;
};
