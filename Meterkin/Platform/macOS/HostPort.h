#pragma once

#include <mach/mach.h>

/// The port through which the kernel tells about the machine. Each request for it adds a reference
/// to the task, so whoever reads on and on keeps one of these.
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
