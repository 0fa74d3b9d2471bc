#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <optional>

// The text of a settings file: one `key=value` a line, UTF-8, blanks around both ignored. A value
// may stand in double quotes; \n, \r and \\ in it mean what they usually do. Lines of any other
// form, comments among them, are not ours and left alone. Of several lines with one key the last
// counts. Keys are plain words.

/// In bytes; a longer file is no settings file.
inline constexpr qint64 SettingsSizeLimit = 1024 * 1024;

/// The value of the key; nothing when no line has it.
std::optional<QString> settingIn(QByteArrayView text, const QString &key);

/// The text with the key set to the value: in its old place, else at the end. Other lines with the
/// same key are dropped, everything else stays byte for byte.
QByteArray withSetting(QByteArrayView text, const QString &key, const QString &value);
