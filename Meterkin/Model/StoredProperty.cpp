#include "Model/StoredProperty.h"

#include "Model/MetricTraits.h"

#include <cstdio>
#include <cstdlib>
#include <limits>
#include <utility>

void writeSetting(DefaultsStore &store, const QString &key, SystemMetric metric)
{
    store.setText(key, traitsOf(metric).rawValue);
}

void writeSetting(DefaultsStore &store, const QString &key, double value)
{
    store.setNumber(key, value);
}

void writeSetting(DefaultsStore &store, const QString &key, bool value)
{
    store.setBoolean(key, value);
}

void writeSetting(DefaultsStore &store, const QString &key, quint32 value)
{
    store.setInteger(key, value);
}

template <> SystemMetric readSetting(const DefaultsStore &store, const QString &key)
{
    const QString rawValue = store.text(key).value_or(QString());
    return metricFromRawValue(rawValue).value_or(SystemMetric::MemoryUsage);
}

template <> double readSetting(const DefaultsStore &store, const QString &key)
{
    return store.number(key);
}

template <> bool readSetting(const DefaultsStore &store, const QString &key)
{
    return store.boolean(key);
}

template <> quint32 readSetting(const DefaultsStore &store, const QString &key)
{
    const qint64 value = store.integer(key);
    if (!std::in_range<quint32>(value)) {
        std::fprintf(stderr, "[Meterkin] %s in %s must be a whole number from 0 to %u\n",
                     qPrintable(key), qPrintable(store.location()),
                     std::numeric_limits<quint32>::max());
        // A mistake in the user's file, not a bug: no core dump.
        std::_Exit(EXIT_FAILURE);
    }
    return static_cast<quint32>(value);
}
