#pragma once

#include <QString>

#include <functional>
#include <memory>

/// Keeps the settings file up to date without holding the main thread up: a thread that lives as
/// long as there is something to write puts the newest values into the file, never older ones after
/// newer ones. What others changed in the file meanwhile is kept, and a file that cannot be read as
/// a whole is never replaced. What cannot be stored is tried again with the next change. Main
/// thread only.
class SettingsWriter {
public:
    /// Runs on the main thread, from its event loop, with why nothing can be stored now; empty once
    /// all is stored again.
    using ProblemChanged = std::function<void(const QString &problem)>;

    /// The problem is the one known already; empty for none.
    SettingsWriter(QString path, const QString &problem, ProblemChanged problemChanged);
    /// Waits until all is stored, but not longer than 4.5 s for a disk that hangs.
    ~SettingsWriter();
    Q_DISABLE_COPY_MOVE(SettingsWriter)

    void set(const QString &key, const QString &value);

    /// Tries to store what could not be stored, or just finds out whether anything could be.
    void retry();

private:
    struct Work;

    std::shared_ptr<Work> m_work; ///< shared with the thread, which a hanging disk may keep
};

/// Says on standard error why the settings of that file cannot be stored.
void complainOfSettings(const QString &path, const QString &problem);
