#include "Model/ObservationScope.h"

#include <utility>

ObservationScope::ObservationScope(std::function<void()> reads, std::function<void()> changed,
                                   QObject *parent)
    : QObject(parent)
    , m_reads(std::move(reads))
    , m_changed(std::move(changed))
{
    observe();
}

void ObservationScope::observe()
{
    m_isReading = true;
    m_probe.setBinding([this] {
        // Evaluated once to learn what it depends on, and again at the first change. It reads
        // nothing then and so depends on nothing: later changes are ignored until react().
        if (std::exchange(m_isReading, false))
            m_reads();
        else
            QMetaObject::invokeMethod(this, &ObservationScope::react, Qt::QueuedConnection);
        return 0;
    });
}

void ObservationScope::react()
{
    // First, so that changes during `changed` are not lost.
    observe();
    m_changed();
}
