#include "Platform/Linux/Storage/LoginItem.h"

#include "Platform/Linux/Storage/AutostartEntry.h"
#include "Platform/Linux/Storage/TextFile.h"
#include "Platform/Log.h"

#include <QDir>
#include <QFileInfo>

#include <utility>

namespace {

constexpr qint64 SizeLimit = 64 * 1024; // bytes; the entry that we write has 500

// Not by the umask: nobody else may put a program into the user's sessions.
constexpr mode_t EntryMode = 0644;

/// Not from Qt, which accepts a relative folder: that would be another one at each login.
QString configurationFolder()
{
    const QString folder = qEnvironmentVariable("XDG_CONFIG_HOME");
    return QDir::isAbsolutePath(folder) ? folder : QDir::homePath() + QStringLiteral("/.config");
}

bool isMissing(const QString &path)
{
    const QFileInfo info(path);
    return !info.exists() && !info.isSymLink();
}

TextFileContent readEntry(const QString &path)
{
    if (QFileInfo::exists(path))
        return readTextFile(path, SizeLimit);
    return {{}, QStringLiteral("the link leads nowhere")};
}

} // namespace

LinuxLoginItem::LinuxLoginItem(QString program)
    : m_program(std::move(program))
    , m_path(configurationFolder() + QStringLiteral("/autostart/org.meterkin.Meterkin.desktop"))
{
}

bool LinuxLoginItem::isEnabled() const
{
    const TextFileContent content = readEntry(m_path);
    const AutostartEntry entry(content.text);
    // An "OnlyShowIn" that leaves this desktop out is the user's choice, and no reason to change
    // it.
    return content.problem.isEmpty() && entry.isValid() && !entry.isSwitchedOff()
        && entry.findsItsPrograms();
}

bool LinuxLoginItem::registerItem(LoginItemWish wish)
{
    if (isMissing(m_path))
        return write(AutostartEntry::textFor(m_program));
    const TextFileContent content = readEntry(m_path);
    if (!content.problem.isEmpty())
        return refuse(content.problem);
    AutostartEntry entry(content.text);
    // An empty file in the place of an entry switches it off too.
    if (wish == LoginItemWish::Standing && (!entry.isValid() || entry.isSwitchedOff())) {
        qCDebug(logStorage) << m_path << "is switched off: the program does not start at login";
        return false;
    }
    if (!entry.isValid())
        return write(AutostartEntry::textFor(m_program));
    const bool hasProgram = entry.findsItsPrograms();
    if (hasProgram && !entry.isSwitchedOff())
        return true;
    // An entry whose program was moved is of no use, not even to a user who edited its other lines.
    if (!hasProgram)
        entry.setProgram(m_program);
    entry.switchOn();
    return write(entry.text());
}

bool LinuxLoginItem::unregisterItem()
{
    if (isMissing(m_path))
        return true;
    const TextFileContent content = readEntry(m_path);
    if (!content.problem.isEmpty())
        return refuse(content.problem);
    AutostartEntry entry(content.text);
    if (entry.isUnedited())
        return QFile::remove(m_path) || refuse(QStringLiteral("cannot be removed"));
    // Removing it would lose what the user has edited.
    if (!entry.isValid() || entry.isSwitchedOff())
        return true;
    entry.switchOff();
    return write(entry.text());
}

bool LinuxLoginItem::write(const QByteArray &text) const
{
    if (!QFileInfo(m_program).isExecutable())
        return refuse(QStringLiteral("%1 cannot be run").arg(m_program));
    const QString problem = replaceTextFile(m_path, text, EntryMode, Sync::Soon);
    return problem.isEmpty() || refuse(problem);
}

bool LinuxLoginItem::refuse(const QString &problem) const
{
    qCWarning(logStorage, "%s: %s; the login item stays as it is", qPrintable(m_path),
              qPrintable(problem));
    return false;
}
