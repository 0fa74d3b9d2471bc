#pragma once

// How this program runs, and how those that it starts must not.

/// Before the first thread is started. Asks for SCHED_BATCH (man 7 sched): our wake-ups then
/// interrupt no running thread, not even one of ours, which saves context switches at each sample.
/// Without effect where the system refuses it or the program was started with another policy.
/// Keeps Qt from GLib's event loop, which takes more memory and time in each thread.
void useOwnSurroundings();

/// Gives the calling thread, and programs that it starts, what was before useOwnSurroundings(),
/// which may be called again.
void useOriginalSurroundings();
