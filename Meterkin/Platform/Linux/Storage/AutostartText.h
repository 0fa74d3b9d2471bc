#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

// The text of an autostart entry, in the format of desktop entries. Of its main group only a few
// keys are understood here; all else, and the other groups, stays byte for byte.

/// The entry that we write for a program, given by its absolute path.
QByteArray autostartText(const QString &program);

/// Whether the text is one that autostartText() gives, for whatever program.
bool isOwnAutostartText(QByteArrayView text);

/// Whether it has the group that makes a file an entry.
bool isDesktopEntry(QByteArrayView text);

/// Whether it is switched off by one of the keys that desktops do it with.
bool isSwitchedOff(QByteArrayView text);

/// Whether the programs that it names are there.
bool namesPrograms(QByteArrayView text);

/// The entry switched on or off, otherwise as it was.
QByteArray withSwitch(QByteArrayView text, bool on);

/// The entry with another program to start, given by its absolute path.
QByteArray withProgram(QByteArrayView text, const QString &program);
