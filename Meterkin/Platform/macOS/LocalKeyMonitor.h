#pragma once

#include "Platform/KeyDownMonitor.h"

#include <memory>

/// Watches the keys of the application's own windows, before those see them.
class LocalKeyMonitor : public KeyDownMonitor {
public:
    LocalKeyMonitor();
    ~LocalKeyMonitor() override;

    void install(std::function<bool(const KeyDown &)> handler) override;
    void remove() override;

private:
    struct Objects;
    std::unique_ptr<Objects> m_objects;
};
