#include "Platform/Linux/Storage/AutostartText.h"

#include <QList>
#include <QStandardPaths>

#include <algorithm>
#include <optional>

namespace {

const QByteArray groupHeader = QByteArrayLiteral("[Desktop Entry]");
const QByteArray execKey = QByteArrayLiteral("Exec");
const QByteArray tryExecKey = QByteArrayLiteral("TryExec");
const QByteArray hiddenKey = QByteArrayLiteral("Hidden");

struct Switch {
    QByteArrayView key;
    bool on; ///< the value with which the entry is on
};

// "Hidden" is the common one; the others are written by the session tools of some desktops.
constexpr Switch Switches[] = {
    {"Hidden", false},
    {"X-GNOME-Autostart-enabled", true},
    {"X-MATE-Autostart-enabled", true},
};

/// A value as the format wants it. Blanks around a value do not count, and a path has none at its
/// begin.
QString escaped(QString text)
{
    text.replace(u'\\', QLatin1String("\\\\"))
        .replace(u'\n', QLatin1String("\\n"))
        .replace(u'\t', QLatin1String("\\t"))
        .replace(u'\r', QLatin1String("\\r"));
    if (text.endsWith(u' '))
        text.replace(text.size() - 1, 1, QLatin1String("\\s"));
    return text;
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
        default: // an escaped backslash, or something unknown
            if (code != u'\\')
                text += u'\\';
            text += code;
        }
    }
    return text;
}

/// A command line of one word.
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

bool isThere(const QString &program)
{
    // Also looks along the PATH, as desktops do.
    return !program.isEmpty() && !QStandardPaths::findExecutable(program).isEmpty();
}

/// Without the blanks of the format around it; others are part of a value.
QByteArrayView trimmedLine(QByteArrayView text)
{
    const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
    while (!text.isEmpty() && isBlank(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isBlank(text.back()))
        text.chop(1);
    return text;
}

/// A line of the main group with a key in it.
struct Line {
    QByteArray key;
    QByteArray value;
    qsizetype valueBegin = 0; ///< in the whole text
    qsizetype valueEnd = 0;
};

struct MainGroup {
    qsizetype begin = -1; ///< behind the header; -1 when there is no such group
    QList<Line> lines;

    std::optional<QByteArray> value(QByteArrayView key) const
    {
        const auto line = std::ranges::find(lines, key, &Line::key);
        return line != lines.end() ? std::optional(line->value) : std::nullopt;
    }
};

MainGroup mainGroup(QByteArrayView text)
{
    MainGroup group;
    for (qsizetype begin = 0; begin < text.size();) {
        const qsizetype lineBreak = text.indexOf('\n', begin);
        const qsizetype next = lineBreak < 0 ? text.size() : lineBreak + 1;
        const QByteArrayView line = text.sliced(begin, next - begin);
        const QByteArrayView content = trimmedLine(line);
        if (content.startsWith('[')) {
            if (group.begin >= 0)
                break;
            if (content == groupHeader)
                group.begin = next;
        } else if (group.begin >= 0 && !content.startsWith('#')) {
            if (const qsizetype equals = content.indexOf('='); equals > 0) {
                const QByteArrayView value = trimmedLine(content.sliced(equals + 1));
                const qsizetype valueBegin = value.isEmpty()
                    ? content.data() + equals + 1 - text.data()
                    : value.data() - text.data();
                group.lines.append({trimmedLine(content.first(equals)).toByteArray(),
                                    value.toByteArray(), valueBegin, valueBegin + value.size()});
            }
        }
        begin = next;
    }
    return group;
}

/// What desktops read as a yes or a no; neither for other texts.
std::optional<bool> booleanOf(QByteArrayView value)
{
    const QByteArray word = value.toByteArray().toLower();
    if (word == "true" || word == "1")
        return true;
    if (word == "false" || word == "0")
        return false;
    return std::nullopt;
}

QByteArray withValue(const QByteArray &text, QByteArrayView key, const QByteArray &value)
{
    QByteArray changed = text;
    const MainGroup group = mainGroup(text);
    // From the end, so that the places before stay where they are; a key may be there twice.
    for (auto line = group.lines.crbegin(); line != group.lines.crend(); ++line) {
        if (line->key == key)
            changed.replace(line->valueBegin, line->valueEnd - line->valueBegin, value);
    }
    return changed;
}

QByteArray withNewLine(const QByteArray &text, QByteArrayView key, const QByteArray &value)
{
    const qsizetype begin = mainGroup(text).begin;
    const QByteArray lineEnd = text.first(begin).endsWith("\r\n") ? "\r\n" : "\n";
    QByteArray line = key.toByteArray() + '=' + value + lineEnd;
    if (!text.first(begin).endsWith('\n'))
        line.prepend(lineEnd);
    return QByteArray(text).insert(begin, line);
}

} // namespace

QByteArray autostartText(const QString &program)
{
    // The last three keys are for desktops that would else start it before the panel is there,
    // where the program had to show itself elsewhere for a while.
    return groupHeader
        + "\n"
          "Type=Application\n"
          "Name=Meterkin\n"
          "Comment=Memory, CPU and fan speed in the panel\n"
          "Icon=org.meterkin.Meterkin\n"
          "Exec="
        + escaped(commandLine(program)).toUtf8() + "\nTryExec=" + escaped(program).toUtf8()
        + "\n"
          "Terminal=false\n"
          "StartupNotify=false\n"
          "X-GNOME-Autostart-enabled=true\n"
          "X-GNOME-Autostart-Delay=2\n"
          "X-KDE-autostart-after=panel\n"
          "X-LXQt-Need-Tray=true\n";
}

bool isOwnAutostartText(QByteArrayView text)
{
    const std::optional<QByteArray> program = mainGroup(text).value(tryExecKey);
    return program && autostartText(unescaped(QString::fromUtf8(*program))) == text;
}

bool isDesktopEntry(QByteArrayView text)
{
    return mainGroup(text).begin >= 0;
}

bool isSwitchedOff(QByteArrayView text)
{
    const QList<Line> lines = mainGroup(text).lines;
    return std::ranges::any_of(lines, [](const Line &line) {
        const auto *const known = std::ranges::find(Switches, line.key, &Switch::key);
        return known != std::end(Switches) && booleanOf(line.value) == !known->on;
    });
}

bool namesPrograms(QByteArrayView text)
{
    const MainGroup group = mainGroup(text);
    const auto textOf = [](const QByteArray &value) { return unescaped(QString::fromUtf8(value)); };
    const std::optional<QByteArray> tryExec = group.value(tryExecKey);
    return isThere(programOf(textOf(group.value(execKey).value_or(QByteArray()))))
        && (!tryExec || isThere(textOf(*tryExec)));
}

QByteArray withSwitch(QByteArrayView text, bool on)
{
    QByteArray changed = text.toByteArray();
    if (!on)
        return mainGroup(text).value(hiddenKey) ? withValue(changed, hiddenKey, "true")
                                                : withNewLine(changed, hiddenKey, "true");
    for (const Switch &known : Switches)
        changed = withValue(changed, known.key, known.on ? "true" : "false");
    return changed;
}

QByteArray withProgram(QByteArrayView text, const QString &program)
{
    const QByteArray exec = escaped(commandLine(program)).toUtf8();
    QByteArray changed = withValue(text.toByteArray(), tryExecKey, escaped(program).toUtf8());
    return mainGroup(text).value(execKey) ? withValue(changed, execKey, exec)
                                          : withNewLine(changed, execKey, exec);
}
