#include "Fakes/CallLog.h"

#include <malloc/malloc.h>

size_t malloc_zone_pressure_relief(malloc_zone_t *zone, size_t goal)
{
    CallLog::note(QStringLiteral("malloc_zone_pressure_relief %1 %2")
                      .arg(zone == nullptr ? QStringLiteral("all") : QStringLiteral("one"))
                      .arg(goal));
    return 0;
}
