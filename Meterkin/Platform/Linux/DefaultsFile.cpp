#include "Platform/Linux/DefaultsFile.h"

#include "Platform/Linux/SettingsText.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryFile>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <limits>
#include <unistd.h>
#include <utility>

// Not QSettings: it waits half a minute on a lock that somebody left behind, drops the lines that
// it does not understand and writes only when the event loop comes round.

namespace {

constexpr qint64 SizeLimit = 1024 * 1024; // bytes
constexpr qint64 LeftoverAge = 60; // seconds
constexpr int LinkLimit = 40; // as many as the kernel follows

constexpr QFile::Permissions OwnerOnly = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;

struct Content {
    QByteArray text;
    QString problem; ///< why the file must not be replaced; empty when it may be
};

/// The file that the path leads to, whether it is there or not; replacing a link would cut it.
QString targetOf(const QString &path)
{
    QFileInfo info(path);
    for (int links = 0; info.isSymLink() && links < LinkLimit; ++links)
        info.setFile(info.symLinkTarget());
    return info.filePath();
}

Content readContent(const QString &path)
{
    const QFileInfo info(targetOf(path));
    if (info.isSymLink())
        return {{}, QStringLiteral("the link leads nowhere")};
    if (!info.exists())
        return {};
    // Opening a pipe would wait for its other end.
    if (!info.isFile())
        return {{}, QStringLiteral("not a regular file")};
    QFile file(info.filePath());
    if (!file.open(QIODevice::ReadOnly))
        return {{}, file.errorString()};
    const qint64 size = file.size();
    Content content{file.read(std::min(size, SizeLimit)), {}};
    if (file.error() != QFile::NoError) {
        content.problem = file.errorString();
    } else if (size > SizeLimit) {
        content.problem = QStringLiteral("too large");
        // Whole lines only: half a value is a wrong one.
        content.text.truncate(content.text.lastIndexOf('\n') + 1);
    }
    return content;
}

bool makeFolder(const QString &path)
{
    const QFileInfo info(path);
    return info.isDir() || (makeFolder(info.path()) && QDir().mkdir(path, OwnerOnly));
}

/// The name of the file that takes shape beside the target; X stands for a random letter.
QString draftPattern(const QFileInfo &target)
{
    return u'.' + target.fileName() + QStringLiteral(".XXXXXX.part");
}

/// Puts the text in the place of the file in one step. Empty, or what went wrong.
QString replaceContent(const QString &path, const QByteArray &text)
{
    const QFileInfo target(targetOf(path));
    if (target.exists() && !target.isWritable())
        return QStringLiteral("write-protected");
    if (!makeFolder(target.path()))
        return QStringLiteral("its folder cannot be created");

    QTemporaryFile draft(target.path() + u'/' + draftPattern(target));
    if (!draft.open())
        return draft.errorString();
    // Without the sync a power cut could leave an empty file.
    const bool isReplaced = (!target.exists() || draft.setPermissions(target.permissions()))
        && draft.write(text) == text.size() && draft.flush() && fdatasync(draft.handle()) == 0
        && std::rename(QFile::encodeName(draft.fileName()).constData(),
                       QFile::encodeName(target.filePath()).constData())
            == 0;
    // The file's own error string is empty after a write that was cut short.
    if (!isReplaced)
        return qt_error_string(errno);
    draft.setAutoRemove(false);
    return {};
}

/// Removes what writers left that were killed. A young one may belong to a writer at work.
void removeLeftovers(const QString &path)
{
    const QFileInfo target(targetOf(path));
    const QString pattern = draftPattern(target).replace(u'X', u'?');
    const QDateTime limit = QDateTime::currentDateTime().addSecs(-LeftoverAge);
    const QFileInfoList leftovers = target.dir().entryInfoList(
        {pattern}, QDir::Files | QDir::Hidden | QDir::NoSymLinks | QDir::CaseSensitive);
    for (const QFileInfo &leftover : leftovers) {
        if (leftover.lastModified() < limit)
            QFile::remove(leftover.filePath());
    }
}

} // namespace

DefaultsFile::DefaultsFile(QString path)
    : m_path(std::move(path))
{
    removeLeftovers(m_path);
    const Content content = readContent(m_path);
    m_text = content.text;
    if (!content.problem.isEmpty())
        complain(content.problem);
}

QString DefaultsFile::defaultPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + QStringLiteral("/meterkin/meterkin.conf");
}

void DefaultsFile::registerDefaults(const QVariantMap &defaults)
{
    m_defaults.insert(defaults);
}

std::optional<QString> DefaultsFile::text(const QString &key) const
{
    if (const auto unsaved = m_unsaved.find(key); unsaved != m_unsaved.end())
        return *unsaved;
    if (std::optional<QString> stored = settingIn(m_text, key))
        return stored;
    if (const auto standard = m_defaults.find(key); standard != m_defaults.end())
        return standard->toString();
    return std::nullopt;
}

double DefaultsFile::number(const QString &key) const
{
    // Too large a number gives an infinity, other text 0.
    const double value = text(key).value_or(QString()).toDouble();
    return std::isnan(value) ? 0.0 : value;
}

bool DefaultsFile::boolean(const QString &key) const
{
    const QString value = text(key).value_or(QString()).toLower();
    return value == u"true" || value == u"yes" || value == u"on" || value == u"1";
}

qint64 DefaultsFile::integer(const QString &key) const
{
    bool isInteger = false;
    const qint64 exact = text(key).value_or(QString()).toLongLong(&isInteger);
    if (isInteger)
        return exact;
    using Limits = std::numeric_limits<qint64>;
    const double value = number(key);
    if (value >= static_cast<double>(Limits::max()))
        return Limits::max();
    if (value <= static_cast<double>(Limits::min()))
        return Limits::min();
    return static_cast<qint64>(value);
}

void DefaultsFile::setText(const QString &key, const QString &value)
{
    m_unsaved.insert(key, value);
    save();
}

void DefaultsFile::setNumber(const QString &key, double value)
{
    setText(key, QString::number(value, 'g', QLocale::FloatingPointShortest));
}

void DefaultsFile::setBoolean(const QString &key, bool value)
{
    setText(key, value ? QStringLiteral("true") : QStringLiteral("false"));
}

void DefaultsFile::setInteger(const QString &key, qint64 value)
{
    setText(key, QString::number(value));
}

void DefaultsFile::save()
{
    const Content content = readContent(m_path);
    if (!content.problem.isEmpty())
        return complain(content.problem);

    QByteArray text = content.text;
    for (auto unsaved = m_unsaved.cbegin(); unsaved != m_unsaved.cend(); ++unsaved)
        text = withSetting(text, unsaved.key(), unsaved.value());
    // An equal write leaves the disk alone.
    if (text != content.text) {
        if (const QString problem = replaceContent(m_path, text); !problem.isEmpty())
            return complain(problem);
    }
    m_text = text;
    m_unsaved.clear();
}

void DefaultsFile::complain(const QString &problem)
{
    if (std::exchange(m_hasComplained, true))
        return;
    std::fprintf(stderr, "[Meterkin] %s: %s; changes last until the program ends\n",
                 qPrintable(m_path), qPrintable(problem));
}
