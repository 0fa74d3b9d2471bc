#pragma once

#include <mach/mach.h>

/// The Mach port for questions about the machine. Each `mach_host_self` adds a reference that has
/// to be released, so a reader keeps one port for all its readings.
class HostPort {
public:
    HostPort() = default;
    ~HostPort() { mach_port_deallocate(mach_task_self(), m_port); }
    HostPort(const HostPort &) = delete;
    HostPort &operator=(const HostPort &) = delete;

    host_t get() const { return m_port; }

private:
    const host_t m_port = mach_host_self();
};
