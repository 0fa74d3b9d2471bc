#pragma once

#include <QProperty>
#include <QString>
#include <QVariantMap>

#include <optional>

/// The user's settings by key, kept over restarts. A key never set reads as its registered
/// default; registered defaults are not stored. Main thread only.
class DefaultsStore {
public:
    virtual ~DefaultsStore() = default;

    /// Adds to the defaults; a key registered before takes the new value.
    virtual void registerDefaults(const QVariantMap &defaults) = 0;

    virtual std::optional<QString> text(const QString &key) const = 0;
    /// 0.0 for a missing or non-numeric value.
    virtual double number(const QString &key) const = 0;
    /// False for a missing value or one that is no truth value.
    virtual bool boolean(const QString &key) const = 0;
    /// 0 for a missing or non-numeric value; a number beyond 64 bits reads as the nearest limit.
    virtual qint64 integer(const QString &key) const = 0;

    /// Each value holds from now on, and is written to the disk whole and in order; the call does
    /// not wait for the disk. A store that cannot be written keeps the value for this run.
    virtual void setText(const QString &key, const QString &value) = 0;
    virtual void setNumber(const QString &key, double value) = 0;
    virtual void setBoolean(const QString &key, bool value) = 0;
    virtual void setInteger(const QString &key, qint64 value) = 0;

    /// Why what is set cannot be stored and holds for this run only, in a few words; empty while
    /// all can, as far as known. Observable.
    virtual QBindable<QString> storageProblem() const { return {}; }
    /// Tries again what could not be stored, in the background.
    virtual void retryStorage() { }

    /// Where the user finds the store, for messages.
    virtual QString location() const = 0;
};
