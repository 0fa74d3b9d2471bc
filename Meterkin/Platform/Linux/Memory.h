#pragma once

#include <QCoreApplication>

#include <malloc.h>

/// Returns freed memory to the system, after the event loop has deleted what was deferred. For the
/// end of a window's views, which frees megabytes that the C library would keep.
inline void giveMemoryBackSoon()
{
    QMetaObject::invokeMethod(
        qApp, [] { malloc_trim(0); }, Qt::QueuedConnection);
}
