#include "Platform/Linux/BatchScheduling.h"

#include <sched.h>

void useBatchScheduling()
{
    const sched_param parameters{};
    static_cast<void>(sched_setscheduler(0, SCHED_BATCH, &parameters));
}
