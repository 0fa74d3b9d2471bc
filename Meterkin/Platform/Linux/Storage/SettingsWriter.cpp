#include "Platform/Linux/Storage/SettingsWriter.h"

#include "Platform/Linux/Storage/KeyValueLines.h"
#include "Platform/Linux/Storage/RunDetached.h"
#include "Platform/Linux/Storage/TextFile.h"
#include "Platform/Log.h"

#include <QMap>
#include <QObject>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <sys/stat.h>
#include <utility>

namespace {

// Enough for two slow writes, the running and the last one, within the 5 s that the program takes
// at most to end.
constexpr std::chrono::milliseconds EndTimeout{4500};

using Values = QMap<QByteArray, QByteArray>;

void warn(const QString &path, const QString &problem)
{
    qCWarning(logStorage, "%s: %s; changes last until the program ends", qPrintable(path),
              qPrintable(problem));
}

/// Empty, or the reason why the values could not be stored.
QString store(const QString &path, const Values &values)
{
    const TextFileContent content = readTextFile(path, SettingsSizeLimit);
    if (!content.problem.isEmpty())
        return content.problem;
    KeyValueLines lines(content.text);
    for (auto value = values.cbegin(); value != values.cend(); ++value)
        lines.set(value.key(), value.value());
    // Equal values leave the disk alone.
    if (lines.text() == content.text)
        return obstacleToReplacing(path);
    return replaceTextFile(path, lines.text(), S_IRUSR | S_IWUSR, Sync::Before);
}

/// A value that has changed meanwhile stays.
void removeStored(Values &unsaved, const Values &stored)
{
    for (auto value = stored.cbegin(); value != stored.cend(); ++value) {
        const auto found = unsaved.constFind(value.key());
        if (found != unsaved.cend() && *found == *value)
            unsaved.erase(found);
    }
}

} // namespace

struct SettingsWriter::Work {
    Work(QString file, QString known, ProblemChanged changed)
        : path(std::move(file))
        , problemChanged(std::move(changed))
        , problem(std::move(known))
    {
    }

    /// Starts the thread unless it runs.
    static void request(const std::shared_ptr<Work> &work);
    /// On the thread, until there is nothing more to store.
    void run();

    const QString path;
    const ProblemChanged problemChanged;
    QString problem; ///< used on the thread only

    // Guards all that follows. Never held during a write: the main thread waits for it.
    std::mutex mutex;
    std::condition_variable ended;
    std::unique_ptr<QObject> receiver =
        std::make_unique<QObject>(); ///< null once the writer is destroyed
    Values unsaved; ///< what the file does not hold yet
    bool isWanted = false; ///< something changed after the thread took the values
    bool isRunning = false;
};

SettingsWriter::SettingsWriter(QString path, const QString &problem, ProblemChanged problemChanged)
    : m_work(std::make_shared<Work>(std::move(path), problem, std::move(problemChanged)))
{
    if (!problem.isEmpty())
        warn(m_work->path, problem);
}

SettingsWriter::~SettingsWriter()
{
    std::unique_lock lock(m_work->mutex);
    m_work->receiver.reset();
    if (!m_work->ended.wait_for(lock, EndTimeout, [this] { return !m_work->isRunning; }))
        warn(m_work->path, QStringLiteral("the disk does not answer"));
}

void SettingsWriter::set(const QByteArray &key, const QByteArray &value)
{
    {
        const std::lock_guard lock(m_work->mutex);
        m_work->unsaved.insert(key, value);
    }
    retry();
}

void SettingsWriter::retry()
{
    Work::request(m_work);
}

void SettingsWriter::Work::request(const std::shared_ptr<Work> &work)
{
    {
        const std::lock_guard lock(work->mutex);
        work->isWanted = true;
        if (std::exchange(work->isRunning, true))
            return;
    }
    runDetached([work] { work->run(); });
}

void SettingsWriter::Work::run()
{
    std::unique_lock lock(mutex);
    while (std::exchange(isWanted, false)) {
        const Values values = unsaved;
        lock.unlock();
        const QString found = store(path, values);
        if (problem.isEmpty() && !found.isEmpty())
            warn(path, found);
        lock.lock();
        if (found.isEmpty())
            removeStored(unsaved, values);
        if (std::exchange(problem, found) != found && receiver)
            QMetaObject::invokeMethod(
                receiver.get(), [found, tell = problemChanged] { tell(found); },
                Qt::QueuedConnection);
    }
    isRunning = false;
    ended.notify_all();
}
