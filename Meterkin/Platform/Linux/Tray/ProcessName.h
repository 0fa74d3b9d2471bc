#pragma once

#include <QString>

/// The name of a process, of which the kernel keeps 15 characters; empty when there is none.
QString processName(quint32 process);
