#include "Views/TypeRegistrations.h"

#include <QQmlEngine>

namespace {

int engineCount = 0;

} // namespace

TypeRegistrations::TypeRegistrations()
{
    ++engineCount;
}

TypeRegistrations::~TypeRegistrations()
{
    if (--engineCount > 0)
        return;
    qmlClearTypeRegistrations();
    // The end of an engine frees the property caches that no type uses; those of the engine before
    // were still in use by the registered types.
    const QQmlEngine sweeper;
}
