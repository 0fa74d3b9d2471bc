#pragma once

#include "Platform/LoginItem.h"

#include <QString>

#include <optional>

class QByteArray;

/// The login item as an entry in the user's autostart folder. Users and the tools of their desktops
/// edit it as well: what they changed stays, and what they switched off stays off until the user
/// switches it on here. Main thread only.
class LinuxLoginItem : public LoginItem {
public:
    /// The program's absolute path, for entries that are written from now on.
    explicit LinuxLoginItem(QString program);

    bool isEnabled() const override;
    /// Also false when the program cannot be run, or something else than an entry is in its place.
    bool registerItem(LoginItemWish wish) override;
    bool unregisterItem() override;

private:
    bool write(const QByteArray &text) const;

    QString m_program;
    QString m_path;
};
