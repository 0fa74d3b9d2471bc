#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

#include <optional>

/// A text of `key=value` lines that people edit too: setting a value leaves every other byte as it
/// is. Blanks around keys and values are ignored. Comments ("#") and lines of any other form have
/// no key. A key may stand in several lines.
class KeyValueLines {
public:
    struct Line {
        QByteArrayView key;
        QByteArrayView value;
    };

    /// The lines of the whole text or, with a header such as "[Desktop Entry]", those from it to
    /// the next header.
    explicit KeyValueLines(QByteArray text, const QByteArray &header = {});

    const QByteArray &text() const { return m_text; }
    /// False when the header is missing. There are no lines then, and none can be set.
    bool hasGroup() const { return m_begin >= 0; }

    /// In their order. The views are valid until a value is set.
    QList<Line> lines() const;

    /// The last line with the key counts.
    std::optional<QByteArrayView> value(QByteArrayView key) const;

    /// Replaces the value in every line with the key. Without one a new line is added: below the
    /// header, else at the end.
    void set(QByteArrayView key, QByteArrayView value);

private:
    QByteArray m_text;
    bool m_endsAtHeader;
    qsizetype m_begin; ///< where the lines begin; -1 without the group
};
