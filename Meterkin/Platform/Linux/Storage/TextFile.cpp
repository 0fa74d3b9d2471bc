#include "Platform/Linux/Storage/TextFile.h"

#include "Platform/Linux/Storage/RunDetached.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <locale.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int LinkLimit = 40; // as many as the kernel follows
constexpr qint64 LeftoverAge = 60; // seconds
constexpr mode_t PermissionBits = 07777;

const QByteArray draftSuffix = QByteArrayLiteral(".part");

/// In English, whatever the user's language; the usual ones can be translated.
QString errorText(int number)
{
    switch (number) {
    case ENOSPC:
    case EDQUOT:
        return QStringLiteral(QT_TRANSLATE_NOOP("TextFile", "the disk is full"));
    case EACCES:
        return QStringLiteral(QT_TRANSLATE_NOOP("TextFile", "Permission denied"));
    case EROFS:
        return QStringLiteral(QT_TRANSLATE_NOOP("TextFile", "Read-only file system"));
    default:
        static const locale_t english = newlocale(LC_ALL_MASK, "C", nullptr);
        return QString::fromLatin1(strerror_l(number, english));
    }
}

/// The file at the end of a chain of links, whether it exists or not.
QFileInfo targetOf(const QString &path)
{
    QFileInfo info(path);
    for (int links = 0; info.isSymLink() && links < LinkLimit; ++links)
        info.setFile(info.symLinkTarget());
    return info;
}

bool makeFolder(const QString &path)
{
    return QFileInfo(path).isDir()
        || (makeFolder(QFileInfo(path).path())
            && mkdir(QFile::encodeName(path).constData(), S_IRWXU) == 0);
}

/// The name of the temporary file beside the target; X stands for a random letter.
QString draftPattern(const QFileInfo &target)
{
    return target.path() + QStringLiteral("/.") + target.fileName() + QStringLiteral(".XXXXXX")
        + QString::fromLatin1(draftSuffix);
}

/// Removes the files of killed writers. A young one may belong to a running writer.
void removeLeftovers(const QFileInfo &target)
{
    const QString pattern = QFileInfo(draftPattern(target)).fileName().replace(u'X', u'?');
    const QDateTime limit = QDateTime::currentDateTime().addSecs(-LeftoverAge);
    const QFileInfoList leftovers = target.dir().entryInfoList(
        {pattern}, QDir::Files | QDir::Hidden | QDir::NoSymLinks | QDir::CaseSensitive);
    for (const QFileInfo &leftover : leftovers) {
        if (leftover.lastModified() < limit)
            QFile::remove(leftover.filePath());
    }
}

bool writeWhole(int file, QByteArrayView text)
{
    while (!text.isEmpty()) {
        const ssize_t written = write(file, text.data(), static_cast<std::size_t>(text.size()));
        if (written < 0)
            return false;
        text = text.sliced(written);
    }
    return true;
}

} // namespace

TextFileContent readTextFile(const QString &path, qint64 limit)
{
    const QFileInfo info = targetOf(path);
    if (info.isSymLink())
        return {{}, QStringLiteral(QT_TRANSLATE_NOOP("TextFile", "the link leads nowhere"))};
    if (!info.exists())
        return {};
    // Opening a pipe would wait for its other end.
    if (!info.isFile())
        return {{}, QStringLiteral(QT_TRANSLATE_NOOP("TextFile", "not a regular file"))};
    QFile file(info.filePath());
    if (!file.open(QIODevice::ReadOnly))
        return {{}, errorText(errno)};
    const qint64 size = file.size();
    TextFileContent content{file.read(std::min(size, limit)), {}};
    if (file.error() != QFile::NoError) {
        content.problem = QStringLiteral(QT_TRANSLATE_NOOP("TextFile", "cannot be read"));
    } else if (size > limit) {
        content.problem = QStringLiteral(QT_TRANSLATE_NOOP("TextFile", "too large"));
        // Half a value is a wrong one.
        content.text.truncate(content.text.lastIndexOf('\n') + 1);
    }
    return content;
}

QString replaceTextFile(const QString &path, const QByteArray &text, mode_t mode, Sync sync)
{
    if (QString obstacle = obstacleToReplacing(path); !obstacle.isEmpty())
        return obstacle;
    const QFileInfo target = targetOf(path);
    if (!makeFolder(target.path()))
        return QStringLiteral(QT_TRANSLATE_NOOP("TextFile", "its folder cannot be created"));
    removeLeftovers(target);

    const QByteArray targetName = QFile::encodeName(target.filePath());
    QByteArray draftName = QFile::encodeName(draftPattern(target));
    const int draft = mkostemps(draftName.data(), static_cast<int>(draftSuffix.size()), O_CLOEXEC);
    if (draft < 0)
        return errorText(errno);
    struct stat old { };
    if (stat(targetName.constData(), &old) == 0)
        mode = old.st_mode & PermissionBits;
    // Failure does no harm: a new temporary file has mode 600.
    fchmod(draft, mode);
    // Without the sync a power cut could leave an empty file.
    if (!writeWhole(draft, text) || (sync == Sync::Before && fdatasync(draft) != 0)
        || std::rename(draftName.constData(), targetName.constData()) != 0) {
        const int error = errno;
        unlink(draftName.constData());
        close(draft);
        return errorText(error);
    }
    if (sync == Sync::Before) {
        close(draft);
    } else {
        runDetached([draft] {
            fdatasync(draft);
            close(draft);
        });
    }
    return {};
}

QString translatedProblem(const QString &problem)
{
    return QCoreApplication::translate("TextFile", problem.toUtf8().constData());
}

QString obstacleToReplacing(const QString &path)
{
    const QFileInfo target = targetOf(path);
    if (target.exists() && !target.isWritable())
        return QStringLiteral(QT_TRANSLATE_NOOP("TextFile", "write-protected"));
    QFileInfo folder(target.path());
    while (!folder.exists() && !folder.isSymLink() && folder.path() != folder.filePath())
        folder.setFile(folder.path());
    if (!folder.isDir())
        return QStringLiteral(QT_TRANSLATE_NOOP("TextFile", "its folder cannot be created"));
    if (access(QFile::encodeName(folder.filePath()).constData(), W_OK | X_OK) != 0)
        return errorText(errno);
    return {};
}
