#pragma once

#include <QByteArray>
#include <QString>

#include <sys/types.h>

// Small text files of the user, read and replaced as a whole. Symbolic links are followed and kept.
// Any thread; each call blocks for the disk. Problems are a few English words for a
// message, which translatedProblem() has in the user's language.

struct TextFileContent {
    QByteArray text; ///< what could be read
    QString problem; ///< why the file must not be replaced; empty also for a missing file
};

/// The limit is in bytes. Of a longer file the whole lines within the limit are read.
TextFileContent readTextFile(const QString &path, qint64 limit);

/// When the text is safe from a power cut.
enum class Sync {
    Before, ///< before it takes the place of the old one
    Soon, ///< later, in the background: the caller does not wait for the disk
};

/// Replaces the file in one step: at any moment the old or the new one exists. `mode` is for a file
/// that did not exist; missing folders are made with mode 700. Returns the problem, or nothing.
QString replaceTextFile(const QString &path, const QByteArray &text, mode_t mode, Sync sync);

QString translatedProblem(const QString &problem);

/// The problem that replaceTextFile() would meet, as far as that can be known without writing.
QString obstacleToReplacing(const QString &path);
