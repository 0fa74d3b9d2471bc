#pragma once

/// What the program needs to start and cannot have, in plain words; null when all is there. Qt
/// would wait for ever for a thread that it could not start, and abort without descriptors.
const char *lackingResource();

/// From now on the program ends with one line and status 1 where memory or a thread is not to be
/// had, on any thread.
void endWhenExhausted();
