#include "Platform/Linux/BatchScheduling.h"

#include <sched.h>

namespace {

bool isBatch = false;

bool setPolicy(int policy)
{
    const sched_param parameters{};
    return sched_setscheduler(0, policy, &parameters) == 0;
}

} // namespace

void useBatchScheduling()
{
    const int policy = sched_getscheduler(0);
    // A restarted program has inherited it.
    isBatch = (policy == SCHED_OTHER || policy == SCHED_BATCH) && setPolicy(SCHED_BATCH);
}

void useOriginalScheduling()
{
    if (isBatch)
        setPolicy(SCHED_OTHER);
}
