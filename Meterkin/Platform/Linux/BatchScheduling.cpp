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
    isBatch = sched_getscheduler(0) == SCHED_OTHER && setPolicy(SCHED_BATCH);
}

void useOriginalScheduling()
{
    if (isBatch)
        setPolicy(SCHED_OTHER);
}
