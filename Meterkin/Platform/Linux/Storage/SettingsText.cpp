#include "Platform/Linux/Storage/SettingsText.h"

#include <algorithm>

namespace {

/// The line that begins at `begin`, with its line feed if it has one.
QByteArrayView lineAt(QByteArrayView text, qsizetype begin)
{
    const qsizetype feed = text.indexOf('\n', begin);
    return feed < 0 ? text.sliced(begin) : text.sliced(begin, feed + 1 - begin);
}

/// What is left of the line when it has this key: the value as it is written.
std::optional<QByteArrayView> rawValue(QByteArrayView line, QByteArrayView key)
{
    const qsizetype sign = line.indexOf('=');
    if (sign < 0 || line.first(sign).trimmed() != key)
        return std::nullopt;
    return line.sliced(sign + 1).trimmed();
}

bool isQuoted(QByteArrayView value)
{
    return value.size() >= 2 && value.startsWith('"') && value.endsWith('"');
}

QString decoded(QByteArrayView raw)
{
    if (isQuoted(raw))
        raw = raw.sliced(1, raw.size() - 2);
    QByteArray value;
    value.reserve(raw.size());
    for (qsizetype i = 0; i < raw.size(); ++i) {
        const char next = raw[i] == '\\' && i + 1 < raw.size() ? raw[i + 1] : '\0';
        if (next == 'n' || next == 'r' || next == '\\') {
            value += next == 'n' ? '\n' : next == 'r' ? '\r' : '\\';
            ++i;
        } else {
            value += raw[i];
        }
    }
    return QString::fromUtf8(value);
}

QByteArray encoded(const QString &value)
{
    QByteArray raw = value.toUtf8();
    raw.replace("\\", "\\\\").replace("\n", "\\n").replace("\r", "\\r");
    if (isQuoted(raw) || raw.trimmed() != raw)
        raw = '"' + raw + '"';
    return raw;
}

} // namespace

std::optional<QString> settingIn(QByteArrayView text, const QString &key)
{
    const QByteArray keyBytes = key.toUtf8();
    std::optional<QByteArrayView> found;
    for (qsizetype begin = 0; begin < text.size();) {
        const QByteArrayView line = lineAt(text, begin);
        if (const std::optional<QByteArrayView> value = rawValue(line, keyBytes))
            found = value;
        begin += line.size();
    }
    return found ? std::optional(decoded(*found)) : std::nullopt;
}

QByteArray withSetting(QByteArrayView text, const QString &key, const QString &value)
{
    const QByteArray keyBytes = key.toUtf8();
    const QByteArray setting = keyBytes + '=' + encoded(value);
    QByteArray result;
    result.reserve(text.size() + setting.size() + 2);
    qsizetype place = -1; // in the result, of the last line with the key
    for (qsizetype begin = 0; begin < text.size();) {
        const QByteArrayView line = lineAt(text, begin);
        if (rawValue(line, keyBytes))
            place = result.size();
        else
            result.append(line);
        begin += line.size();
    }
    if (place < 0 || place == result.size()) {
        if (!result.isEmpty() && !result.endsWith('\n'))
            result.append('\n');
        return result + setting + '\n';
    }
    return result.insert(place, setting + '\n');
}
