#include "Platform/Linux/Storage/AutostartEntry.h"

#include <QStandardPaths>

#include <algorithm>
#include <optional>

namespace {

const QByteArray groupHeader = QByteArrayLiteral("[Desktop Entry]");
constexpr QByteArrayView execKey("Exec");
constexpr QByteArrayView tryExecKey("TryExec");
constexpr QByteArrayView hiddenKey("Hidden");

struct Switch {
    QByteArrayView key;
    bool on; ///< the value with which the entry is on
};

// "Hidden" is the Desktop Entry Specification's; the session tools of some desktops write the
// others.
constexpr Switch Switches[] = {
    {"Hidden", false},
    {"X-GNOME-Autostart-enabled", true},
    {"X-MATE-Autostart-enabled", true},
};

/// A value as the format writes it. It ignores blanks around a value, of which a path can have some
/// at its end only.
QByteArray escaped(QString text)
{
    text.replace(u'\\', QLatin1String("\\\\"))
        .replace(u'\n', QLatin1String("\\n"))
        .replace(u'\t', QLatin1String("\\t"))
        .replace(u'\r', QLatin1String("\\r"));
    if (text.endsWith(u' '))
        text.replace(text.size() - 1, 1, QLatin1String("\\s"));
    return text.toUtf8();
}

QString unescaped(const QString &value)
{
    QString text;
    for (qsizetype i = 0; i < value.size(); ++i) {
        if (value[i] != u'\\' || i + 1 == value.size()) {
            text += value[i];
            continue;
        }
        switch (const QChar code = value[++i]; code.unicode()) {
        case u's':
            text += u' ';
            break;
        case u'n':
            text += u'\n';
            break;
        case u't':
            text += u'\t';
            break;
        case u'r':
            text += u'\r';
            break;
        default: // an escaped backslash, or an unknown escape
            if (code != u'\\')
                text += u'\\';
            text += code;
        }
    }
    return text;
}

/// A command line of one word, as "The Exec key" of that specification quotes it.
QString commandLine(const QString &program)
{
    QString quoted;
    for (const QChar character : program) {
        if (QStringView(u"\"`$\\").contains(character))
            quoted += u'\\';
        quoted += character;
        if (character == u'%')
            quoted += character;
    }
    return u'"' + quoted + u'"';
}

/// The first word of a command line.
QString programOf(const QString &commandLine)
{
    const QString line = commandLine.trimmed();
    QString word;
    bool quoted = false;
    for (qsizetype i = 0; i < line.size(); ++i) {
        if (line[i] == u'"') {
            quoted = !quoted;
            continue;
        }
        if (!quoted && line[i].isSpace())
            break;
        if ((quoted && line[i] == u'\\') || (line[i] == u'%' && line.mid(i + 1, 1) == u"%"))
            ++i;
        if (i < line.size())
            word += line[i];
    }
    return word;
}

bool exists(const QString &program)
{
    // Searches the PATH too, as desktops do.
    return !program.isEmpty() && !QStandardPaths::findExecutable(program).isEmpty();
}

/// Absent for a text that desktops do not read as a truth value.
std::optional<bool> booleanOf(QByteArrayView value)
{
    const QByteArray word = value.toByteArray().toLower();
    if (word == "true" || word == "1")
        return true;
    if (word == "false" || word == "0")
        return false;
    return std::nullopt;
}

} // namespace

QByteArray AutostartEntry::textFor(const QString &program)
{
    // The last three keys are for desktops that would start the program before their panel, where
    // it would have to show its title elsewhere for a while.
    return groupHeader
        + "\n"
          "Type=Application\n"
          "Name=Meterkin\n"
          "Comment=Memory, CPU and fan speed in the panel\n"
          "Icon=org.meterkin.Meterkin\n"
          "Exec="
        + escaped(commandLine(program)) + "\nTryExec=" + escaped(program)
        + "\n"
          "Terminal=false\n"
          "StartupNotify=false\n"
          "X-GNOME-Autostart-enabled=true\n"
          "X-GNOME-Autostart-Delay=2\n"
          "X-KDE-autostart-after=panel\n"
          "X-LXQt-Need-Tray=true\n";
}

AutostartEntry::AutostartEntry(const QByteArray &text)
    : m_lines(text, groupHeader)
{
}

bool AutostartEntry::isUnedited() const
{
    return textFor(textOf(tryExecKey)) == text();
}

bool AutostartEntry::isSwitchedOff() const
{
    return std::ranges::any_of(m_lines.lines(), [](const KeyValueLines::Line &line) {
        const auto *const known = std::ranges::find(Switches, line.key, &Switch::key);
        return known != std::end(Switches) && booleanOf(line.value) == !known->on;
    });
}

bool AutostartEntry::findsItsPrograms() const
{
    return exists(programOf(textOf(execKey)))
        && (!m_lines.value(tryExecKey) || exists(textOf(tryExecKey)));
}

void AutostartEntry::switchOn()
{
    for (const Switch &known : Switches) {
        if (m_lines.value(known.key))
            m_lines.set(known.key, known.on ? "true" : "false");
    }
}

void AutostartEntry::switchOff()
{
    m_lines.set(hiddenKey, "true");
}

void AutostartEntry::setProgram(const QString &program)
{
    m_lines.set(execKey, escaped(commandLine(program)));
    if (m_lines.value(tryExecKey))
        m_lines.set(tryExecKey, escaped(program));
}

QString AutostartEntry::textOf(QByteArrayView key) const
{
    return unescaped(QString::fromUtf8(m_lines.value(key).value_or(QByteArrayView())));
}
