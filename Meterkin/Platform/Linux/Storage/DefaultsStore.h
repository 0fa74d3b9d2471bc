#pragma once

#include "Platform/DefaultsStore.h"
#include "Platform/Linux/Storage/KeyValueLines.h"
#include "Platform/Linux/Storage/SettingsWriter.h"
#include "Platform/Linux/Storage/TextFile.h"

#include <QMap>
#include <QProperty>

/// The settings in a text file that people may edit: read when the store is made, written in the
/// background. The destructor waits for the last write, but not for a disk that hangs.
class LinuxDefaultsStore : public DefaultsStore {
public:
    /// Reads the file; the first write makes a missing one.
    explicit LinuxDefaultsStore(const QString &path = defaultPath());

    /// meterkin/meterkin.conf in the user's configuration folder.
    static QString defaultPath();
    /// Whether this is root with another user's settings, as under "sudo -E" or "su": a file that
    /// root writes would no longer be the user's.
    static bool wouldTakeSettingsOver();

    void registerDefaults(const QVariantMap &defaults) override;

    std::optional<QString> text(const QString &key) const override;
    /// Infinities are numbers, NaN is none.
    double number(const QString &key) const override;
    /// True for "true", "yes", "on" and "1", in any letter case.
    bool boolean(const QString &key) const override;
    /// A number with decimals is cut towards zero.
    qint64 integer(const QString &key) const override;

    void setText(const QString &key, const QString &value) override;
    void setNumber(const QString &key, double value) override;
    void setBoolean(const QString &key, bool value) override;
    void setInteger(const QString &key, qint64 value) override;

    QBindable<QString> storageProblem() const override { return &m_problem; }
    void retryStorage() override { m_writer.retry(); }
    QString location() const override { return m_path; }

private:
    LinuxDefaultsStore(const QString &path, const TextFileContent &content);

    /// Without the defaults.
    std::optional<QString> setOrStored(const QString &key) const;

    QString m_path;
    KeyValueLines m_file; ///< as it was at the start
    QMap<QString, QString> m_set; ///< in this run
    QVariantMap m_defaults;
    QProperty<QString> m_problem;
    SettingsWriter m_writer;
};
