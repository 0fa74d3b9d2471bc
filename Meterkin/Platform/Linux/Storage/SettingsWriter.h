#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>

/// In bytes; a longer file is no settings file.
inline constexpr qint64 SettingsSizeLimit = 1024 * 1024;

/// Keeps the settings file up to date without blocking the main thread: a thread that runs while
/// there is something to write stores the newest values, in order. Other lines of the file, changed
/// by others meanwhile, are kept, and a file that cannot be read as a whole is never replaced. A
/// failed write is retried with the next change. Main thread only.
class SettingsWriter {
public:
    /// Runs on the main thread, from its event loop, with the reason why nothing can be stored now;
    /// empty once all is stored again.
    using ProblemChanged = std::function<void(const QString &problem)>;

    /// `problem` is the one that reading the file has met; empty for none.
    SettingsWriter(QString path, const QString &problem, ProblemChanged problemChanged);
    /// Waits until all is stored, but not longer than 4.5 s for a disk that hangs.
    ~SettingsWriter();
    Q_DISABLE_COPY_MOVE(SettingsWriter)

    void set(const QByteArray &key, const QByteArray &value);

    /// Stores what could not be stored, or only finds out whether anything could be.
    void retry();

private:
    struct Work;

    std::shared_ptr<Work> m_work; ///< shared with the thread, which a disk that hangs may block
};
