#include "Platform/Linux/Storage/LoginItem.h"

#include "Platform/Linux/Storage/AutostartText.h"
#include "Platform/Linux/Storage/TextFile.h"

#include <QDir>
#include <QFileInfo>

#include <utility>

namespace {

constexpr qint64 SizeLimit = 64 * 1024; // bytes; ours has 500

// Whatever the umask says: nobody else may put a program into the user's sessions.
constexpr mode_t EntryMode = 0644;

/// Qt takes a relative folder too, which would be another one at each login.
QString configurationFolder()
{
    const QString folder = qEnvironmentVariable("XDG_CONFIG_HOME");
    return QDir::isAbsolutePath(folder) ? folder : QDir::homePath() + QStringLiteral("/.config");
}

bool isNothing(const QString &path)
{
    const QFileInfo info(path);
    return !info.exists() && !info.isSymLink();
}

/// The whole text; absent when there is none, or it cannot be one of an entry.
std::optional<QByteArray> readText(const QString &path)
{
    if (!QFileInfo::exists(path))
        return std::nullopt;
    const TextFileContent content = readTextFile(path, SizeLimit);
    return content.problem.isEmpty() ? std::optional(content.text) : std::nullopt;
}

} // namespace

LinuxLoginItem::LinuxLoginItem(QString program)
    : m_program(std::move(program))
    , m_path(configurationFolder() + QStringLiteral("/autostart/org.meterkin.Meterkin.desktop"))
{
}

bool LinuxLoginItem::isEnabled() const
{
    const std::optional<QByteArray> text = readText(m_path);
    // Where "OnlyShowIn" and the like leave this desktop out, the user wants it so.
    return text && isDesktopEntry(*text) && !isSwitchedOff(*text) && namesPrograms(*text);
}

bool LinuxLoginItem::registerItem(LoginItemWish wish)
{
    if (isNothing(m_path))
        return write(autostartText(m_program));
    const std::optional<QByteArray> text = readText(m_path);
    if (!text)
        return false;
    const bool expressed = wish == LoginItemWish::Expressed;
    // An empty file in the place of an entry is one more way to switch it off.
    if (!isDesktopEntry(*text))
        return expressed && write(autostartText(m_program));
    if (isSwitchedOff(*text) && !expressed)
        return false;
    const bool works = namesPrograms(*text);
    if (works && !isSwitchedOff(*text))
        return true;
    // Unlike an entry for a program that is there, one whose program was moved is of no use to
    // anybody: not even to the user who edited its other lines.
    const QByteArray working = works ? *text : withProgram(*text, m_program);
    return write(withSwitch(working, true));
}

bool LinuxLoginItem::unregisterItem()
{
    if (isNothing(m_path))
        return true;
    const std::optional<QByteArray> text = readText(m_path);
    if (!text)
        return false;
    if (isOwnAutostartText(*text))
        return QFile::remove(m_path);
    // What the user has put into it would be lost with the file.
    return !isDesktopEntry(*text) || isSwitchedOff(*text) || write(withSwitch(*text, false));
}

bool LinuxLoginItem::write(const QByteArray &text) const
{
    return QFileInfo(m_program).isExecutable()
        && replaceTextFile(m_path, text, EntryMode, Sync::Soon).isEmpty();
}
