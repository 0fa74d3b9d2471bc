#pragma once

#include <memory>

/// Tells the system, from construction to destruction, that the user wants us to keep time: it
/// stretches the timers of a program that shows no window. The machine may sleep all the same.
class ProcessActivity {
public:
    ProcessActivity();
    ~ProcessActivity();

private:
    struct Objects;
    std::unique_ptr<Objects> m_objects;
};
