#pragma once

#include "Platform/DefaultsStore.h"

/// The standard user defaults, in the domain of the bundle identifier, or of the process name
/// without one. macOS writes them to the disk by itself. Main thread only.
class MacDefaultsStore : public DefaultsStore {
public:
    void registerDefaults(const QVariantMap &defaults) override;

    std::optional<QString> text(const QString &key) const override;
    double number(const QString &key) const override;
    bool boolean(const QString &key) const override;
    qint64 integer(const QString &key) const override;

    void setText(const QString &key, const QString &value) override;
    void setNumber(const QString &key, double value) override;
    void setBoolean(const QString &key, bool value) override;
    void setInteger(const QString &key, qint64 value) override;

    QString location() const override;
};
