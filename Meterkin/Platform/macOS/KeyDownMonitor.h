#pragma once

#include "Platform/KeyDownMonitor.h"

#include <memory>

/// Sees the keys of the program's windows before the windows do.
class MacKeyDownMonitor : public KeyDownMonitor {
public:
    MacKeyDownMonitor();
    ~MacKeyDownMonitor() override;

    void install(std::function<bool(const KeyDown &)> handler) override;
    void remove() override;

private:
    struct Objects;
    std::unique_ptr<Objects> m_objects;
};
