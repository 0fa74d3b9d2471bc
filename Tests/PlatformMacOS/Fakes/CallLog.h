#pragma once

#include <QString>
#include <QStringList>

#include <mutex>

/// What the fakes were asked to do, in order. Any thread.
class CallLog {
public:
    static void note(const QString &call)
    {
        const std::lock_guard lock(mutex);
        calls << call;
    }
    /// All since the last time.
    static QStringList take()
    {
        const std::lock_guard lock(mutex);
        return std::exchange(calls, {});
    }

private:
    inline static std::mutex mutex;
    inline static QStringList calls;
};
