#pragma once

#include "Platform/DefaultsStore.h"

#include <QByteArray>
#include <QMap>

/// The settings in a text file that people may edit, read at the start and replaced as a whole at
/// each write. What others changed in it meanwhile is kept. A file that cannot be read as a whole
/// is never replaced; what cannot be saved holds for this run and is tried again at the next write.
class DefaultsFile : public DefaultsStore {
public:
    /// Reads the file; one that is not there yet is made by the first write.
    explicit DefaultsFile(QString path = defaultPath());

    /// meterkin/meterkin.conf in the user's configuration folder.
    static QString defaultPath();

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

    QString location() const override { return m_path; }

private:
    void save();
    /// Says once what is wrong with the file, not at every write.
    void complain(const QString &problem);

    QString m_path;
    QByteArray m_text; ///< the file as we saw it last
    QMap<QString, QString> m_unsaved; ///< what the file does not hold yet
    QVariantMap m_defaults;
    bool m_hasComplained = false;
};
