#pragma once

/// Before anything else: keeps the C library from holding memory for each thread, and from keeping
/// what was freed.
void useLittleMemory();

/// Returns freed memory and stack to the system, after the event loop has deleted what was
/// deferred. For the end of the program's start, and of a window's views. Main thread only.
void giveMemoryBackSoon();
