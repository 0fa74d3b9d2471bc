#pragma once

/// What the program needs to start and does not get, for an error message; null when nothing is
/// missing. Without threads Qt would wait forever, without descriptors it would abort.
const char *lackingResource();

/// From now on the program ends with one line and status 1 when it gets no memory or no thread, on
/// any thread.
void endWhenExhausted();
