#pragma once

/// Asks for SCHED_BATCH (man 7 sched): our wake-ups then interrupt no running thread, not even one
/// of ours, which saves context switches at each sample. Called before the first thread is started.
/// Without effect where the system refuses it or the program was started with another policy.
void useBatchScheduling();

/// Gives the calling thread, and programs that it starts, the policy from before
/// useBatchScheduling(), which may be called again.
void useOriginalScheduling();
