#pragma once

#include "Platform/Linux/Storage/KeyValueLines.h"

#include <QString>

/// The text of an autostart entry: a file in the format of the Desktop Entry Specification, used as
/// the Desktop Application Autostart Specification says (both on specifications.freedesktop.org).
/// Only a few keys of its main group are read and set; all else stays byte for byte.
class AutostartEntry {
public:
    /// The entry that we write for a program, given by its absolute path.
    static QByteArray textFor(const QString &program);

    explicit AutostartEntry(const QByteArray &text);

    const QByteArray &text() const { return m_lines.text(); }

    /// Whether it has the group that makes a file an entry.
    bool isValid() const { return m_lines.hasGroup(); }
    /// Whether it is one that textFor() gives, for any program.
    bool isUnedited() const;
    /// Whether one of the keys that desktops use for it switches the entry off.
    bool isSwitchedOff() const;
    /// Whether the programs that it names exist.
    bool findsItsPrograms() const;

    void switchOn();
    void switchOff();
    /// Another program to start, by its absolute path.
    void setProgram(const QString &program);

private:
    QString textOf(QByteArrayView key) const; ///< empty when the key is missing

    KeyValueLines m_lines;
};
