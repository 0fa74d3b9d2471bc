#pragma once

/// Tells the scheduler that our wake-ups need not interrupt anybody, not even each other: the
/// sampling thread then runs when the main thread sleeps, at three context switches a sample. To be
/// called before the first thread is started; without effect where the system does not allow it, or
/// the program was started with a scheduling of its own.
void useBatchScheduling();

/// Gives the calling thread, and the programs that it starts, the scheduling from before
/// useBatchScheduling(), which may be called again.
void useOriginalScheduling();
