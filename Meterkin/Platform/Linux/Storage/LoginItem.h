#pragma once

#include "Platform/LoginItem.h"

#include <QString>

class QByteArray;

/// The login item as an entry in the user's autostart folder. Users and the tools of their desktops
/// edit it too: their changes stay, and an entry that they switched off stays off until the user
/// switches it on in the settings. Main thread only.
class LinuxLoginItem : public LoginItem {
public:
    /// The program's absolute path.
    explicit LinuxLoginItem(QString program);

    bool isEnabled() const override;
    /// Also false when the program cannot be run, or when something that is no file stands in the
    /// place of the entry.
    bool registerItem(LoginItemWish wish) override;
    bool unregisterItem() override;

private:
    bool write(const QByteArray &text) const;
    bool refuse(const QString &problem) const; ///< false

    QString m_program;
    QString m_path;
};
