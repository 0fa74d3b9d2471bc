#include "Platform/Linux/Process/Surroundings.h"

#include <QByteArray>

#include <optional>

#include <pthread.h>
#include <sched.h>

namespace {

// Qt asks for it whenever a thread gets an event loop.
constexpr const char *WithoutGlib = "QT_NO_GLIB";
// On Wayland Qt leaves the surfaces of windows with that flag to us, for the layer shell.
constexpr const char *OwnSurfaces = "QT_WAYLAND_USE_BYPASSWINDOWMANAGERHINT";

bool isBatch = false;
bool isWithoutGlib = false; // by our own choice
bool hasOwnSurfaces = false; // the same

// Of the calling thread, which later ones inherit. Not every C library has it for processes.
bool setPolicy(int policy)
{
    const sched_param parameters{};
    return pthread_setschedparam(pthread_self(), policy, &parameters) == 0;
}

std::optional<int> currentPolicy()
{
    int policy = 0;
    sched_param parameters{};
    return pthread_getschedparam(pthread_self(), &policy, &parameters) == 0 ? std::optional(policy)
                                                                            : std::nullopt;
}

} // namespace

void useOwnSurroundings()
{
    const std::optional<int> policy = currentPolicy();
    // A restarted program has inherited it.
    isBatch =
        policy && (*policy == SCHED_OTHER || *policy == SCHED_BATCH) && setPolicy(SCHED_BATCH);
    isWithoutGlib = !qEnvironmentVariableIsSet(WithoutGlib) && qputenv(WithoutGlib, "1");
    hasOwnSurfaces = !qEnvironmentVariableIsSet(OwnSurfaces) && qputenv(OwnSurfaces, "1");
}

void useOriginalSurroundings()
{
    if (isBatch)
        setPolicy(SCHED_OTHER);
    if (isWithoutGlib)
        qunsetenv(WithoutGlib);
    if (hasOwnSurfaces)
        qunsetenv(OwnSurfaces);
}
