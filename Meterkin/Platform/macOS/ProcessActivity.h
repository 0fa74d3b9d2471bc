#pragma once

#include <memory>

/// While it lives macOS does not stretch our timers, as it does with programs that show no window.
/// The machine may still sleep.
class ProcessActivity {
public:
    ProcessActivity();
    ~ProcessActivity();

private:
    struct Objects;
    std::unique_ptr<Objects> m_objects;
};
