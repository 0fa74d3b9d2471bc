#include "Platform/Linux/Storage/KeyValueLines.h"

#include <algorithm>
#include <utility>

namespace {

/// Not QByteArrayView::trimmed(), which takes form feeds away too: those are part of a value.
QByteArrayView trimmed(QByteArrayView text)
{
    const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
    while (!text.isEmpty() && isBlank(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isBlank(text.back()))
        text.chop(1);
    return text;
}

/// Where the line after the one at `begin` begins.
qsizetype nextLine(QByteArrayView text, qsizetype begin)
{
    const qsizetype feed = text.indexOf('\n', begin);
    return feed < 0 ? text.size() : feed + 1;
}

qsizetype behindHeader(QByteArrayView text, QByteArrayView header)
{
    for (qsizetype begin = 0; begin < text.size();) {
        const qsizetype next = nextLine(text, begin);
        if (trimmed(text.sliced(begin, next - begin)) == header)
            return next;
        begin = next;
    }
    return -1;
}

} // namespace

KeyValueLines::KeyValueLines(QByteArray text, const QByteArray &header)
    : m_text(std::move(text))
    , m_endsAtHeader(!header.isEmpty())
    , m_begin(header.isEmpty() ? 0 : behindHeader(m_text, header))
{
}

QList<KeyValueLines::Line> KeyValueLines::lines() const
{
    QList<Line> found;
    if (!hasGroup())
        return found;
    const QByteArrayView text(m_text);
    for (qsizetype begin = m_begin; begin < text.size();) {
        const qsizetype next = nextLine(text, begin);
        const QByteArrayView line = trimmed(text.sliced(begin, next - begin));
        if (m_endsAtHeader && line.startsWith('['))
            break;
        if (const qsizetype sign = line.indexOf('='); sign > 0 && !line.startsWith('#'))
            found.append({trimmed(line.first(sign)), trimmed(line.sliced(sign + 1))});
        begin = next;
    }
    return found;
}

std::optional<QByteArrayView> KeyValueLines::value(QByteArrayView key) const
{
    const QList<Line> all = lines();
    const auto line = std::find_if(all.crbegin(), all.crend(),
                                   [key](const Line &each) { return each.key == key; });
    return line != all.crend() ? std::optional(line->value) : std::nullopt;
}

void KeyValueLines::set(QByteArrayView key, QByteArrayView value)
{
    if (!hasGroup())
        return;
    QByteArray changed = m_text;
    bool isThere = false;
    const QList<Line> all = lines();
    // From the end, so that the places of the lines before stay the same.
    for (auto line = all.crbegin(); line != all.crend(); ++line) {
        if (line->key != key)
            continue;
        isThere = true;
        changed.replace(line->value.data() - m_text.constData(), line->value.size(), value);
    }
    if (!isThere) {
        const qsizetype place = m_endsAtHeader ? m_begin : changed.size();
        const QByteArrayView before = QByteArrayView(m_text).first(place);
        const QByteArray lineEnd = before.endsWith("\r\n") ? "\r\n" : "\n";
        QByteArray line = key.toByteArray() + '=' + value.toByteArray() + lineEnd;
        if (!before.isEmpty() && !before.endsWith('\n'))
            line.prepend(lineEnd);
        changed.insert(place, line);
    }
    m_text = changed;
}
