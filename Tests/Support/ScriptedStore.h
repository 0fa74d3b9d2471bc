#pragma once

#include "Platform/DefaultsStore.h"

#include <QList>

/// A store in memory that a test fills beforehand and looks into afterwards.
class ScriptedStore : public DefaultsStore {
public:
    struct Write {
        QString key;
        QVariant value; ///< of the type of the setter that was called

        bool operator==(const Write &) const = default;
    };

    QVariantMap stored; ///< what the user has set, without the defaults
    QVariantMap defaults; ///< what was registered
    QList<Write> writes; ///< every call of a setter, in order
    QProperty<QString> problem; ///< why nothing can be stored

    void registerDefaults(const QVariantMap &added) override { defaults.insert(added); }

    std::optional<QString> text(const QString &key) const override
    {
        const QVariant found = value(key);
        return found.isValid() ? std::optional(found.toString()) : std::nullopt;
    }
    double number(const QString &key) const override { return value(key).toDouble(); }
    bool boolean(const QString &key) const override { return value(key).toBool(); }
    qint64 integer(const QString &key) const override { return value(key).toLongLong(); }

    void setText(const QString &key, const QString &text) override { write(key, text); }
    void setNumber(const QString &key, double number) override { write(key, number); }
    void setBoolean(const QString &key, bool boolean) override { write(key, boolean); }
    void setInteger(const QString &key, qint64 integer) override { write(key, integer); }

    QBindable<QString> storageProblem() const override { return &problem; }
    QString location() const override { return QStringLiteral("scripted store"); }

private:
    QVariant value(const QString &key) const { return stored.value(key, defaults.value(key)); }

    void write(const QString &key, const QVariant &value)
    {
        stored.insert(key, value);
        writes.append({key, value});
    }
};
