#pragma once

#include "Platform/DefaultsStore.h"

/// The standard user defaults: the domain of the program's bundle, or of its process where it lies
/// in none. The system writes them out by itself. Main thread only.
class UserDefaultsStore : public DefaultsStore {
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
