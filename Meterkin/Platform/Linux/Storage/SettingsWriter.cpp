#include "Platform/Linux/Storage/SettingsWriter.h"

#include "Platform/Linux/Storage/RunDetached.h"
#include "Platform/Linux/Storage/SettingsText.h"
#include "Platform/Linux/Storage/TextFile.h"

#include <QMap>
#include <QObject>

#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <mutex>
#include <sys/stat.h>
#include <utility>

namespace {

// Time for two slow writes, the one under way and the last, within what the program has for its
// end.
constexpr std::chrono::milliseconds EndTimeout{4500};

using Values = QMap<QString, QString>;

/// Empty, or why the values could not be stored.
QString store(const QString &path, const Values &values)
{
    const TextFileContent content = readTextFile(path, SettingsSizeLimit);
    if (!content.problem.isEmpty())
        return content.problem;
    QByteArray text = content.text;
    for (auto value = values.cbegin(); value != values.cend(); ++value)
        text = withSetting(text, value.key(), value.value());
    // An equal write leaves the disk alone.
    if (text == content.text)
        return obstacleToReplacing(path);
    return replaceTextFile(path, text, S_IRUSR | S_IWUSR, Sync::Before);
}

/// What was set anew in the meantime stays.
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

    /// Starts the thread unless it is there already.
    static void request(const std::shared_ptr<Work> &work);
    /// On the thread: until nothing is wanted any more.
    void run();

    const QString path;
    const ProblemChanged problemChanged;
    QString problem; ///< the thread's alone

    // Never held while the disk works: the main thread waits for it. All that follows is its.
    std::mutex mutex;
    std::condition_variable ended;
    std::unique_ptr<QObject> receiver = std::make_unique<QObject>(); ///< none from the end on
    Values unsaved; ///< what the file does not hold yet
    bool isWanted = false; ///< something has changed since the thread took the values
    bool isRunning = false;
};

SettingsWriter::SettingsWriter(QString path, const QString &problem, ProblemChanged problemChanged)
    : m_work(std::make_shared<Work>(std::move(path), problem, std::move(problemChanged)))
{
}

SettingsWriter::~SettingsWriter()
{
    std::unique_lock lock(m_work->mutex);
    m_work->receiver.reset();
    if (!m_work->ended.wait_for(lock, EndTimeout, [this] { return !m_work->isRunning; }))
        complainOfSettings(m_work->path, QStringLiteral("the disk does not answer"));
}

void SettingsWriter::set(const QString &key, const QString &value)
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
            complainOfSettings(path, found);
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

void complainOfSettings(const QString &path, const QString &problem)
{
    std::fprintf(stderr, "[Meterkin] %s: %s; changes last until the program ends\n",
                 qPrintable(path), qPrintable(problem));
}
