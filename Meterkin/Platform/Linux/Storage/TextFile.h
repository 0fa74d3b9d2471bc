#pragma once

#include <QByteArray>
#include <QString>

#include <sys/types.h>

// Small text files of the user, read and replaced as a whole. Links are followed and stay. Any
// thread; each call takes as long as the disk does. Reasons are a few English words.

struct TextFileContent {
    QByteArray text; ///< what could be read
    QString problem; ///< why the file must not be replaced; empty when it may be, or is not there
};

/// Of a file beyond the limit, in bytes, the whole lines within it.
TextFileContent readTextFile(const QString &path, qint64 limit);

/// When the text is safe from a power cut.
enum class Sync {
    Before, ///< before it takes the place of the old one
    Soon, ///< in the background, for callers that the disk must not hold up
};

/// Puts the text in the place of the file in one step: at any moment there is the old one or the
/// new one. The mode is for a file that is made new; folders are made for their owner alone. Empty,
/// or why it failed.
QString replaceTextFile(const QString &path, const QByteArray &text, mode_t mode, Sync sync);

/// What would keep replaceTextFile() from its work, as far as that shows without trying; empty when
/// nothing does.
QString obstacleToReplacing(const QString &path);
