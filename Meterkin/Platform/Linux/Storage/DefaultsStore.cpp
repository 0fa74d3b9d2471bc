#include "Platform/Linux/Storage/DefaultsStore.h"

#include "Platform/Linux/Storage/SettingsText.h"

#include <QLocale>
#include <QStandardPaths>

#include <cmath>
#include <limits>

// Not QSettings: it waits half a minute on a lock that somebody left behind, drops the lines that
// it does not understand and writes only when the event loop comes round.

LinuxDefaultsStore::LinuxDefaultsStore(const QString &path)
    : LinuxDefaultsStore(path, readTextFile(path, SettingsSizeLimit))
{
}

LinuxDefaultsStore::LinuxDefaultsStore(const QString &path, const TextFileContent &content)
    : m_path(path)
    , m_text(content.text)
    , m_problem(content.problem)
    , m_writer(m_path, content.problem, [this](const QString &problem) { m_problem = problem; })
{
    if (!content.problem.isEmpty())
        complainOfSettings(m_path, content.problem);
}

QString LinuxDefaultsStore::defaultPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + QStringLiteral("/meterkin/meterkin.conf");
}

void LinuxDefaultsStore::registerDefaults(const QVariantMap &defaults)
{
    m_defaults.insert(defaults);
}

std::optional<QString> LinuxDefaultsStore::setOrStored(const QString &key) const
{
    const auto set = m_set.find(key);
    return set != m_set.end() ? std::optional(*set) : settingIn(m_text, key);
}

std::optional<QString> LinuxDefaultsStore::text(const QString &key) const
{
    if (std::optional<QString> set = setOrStored(key))
        return set;
    if (const auto standard = m_defaults.find(key); standard != m_defaults.end())
        return standard->toString();
    return std::nullopt;
}

double LinuxDefaultsStore::number(const QString &key) const
{
    // Too large a number gives an infinity, other text 0.
    const double value = text(key).value_or(QString()).toDouble();
    return std::isnan(value) ? 0.0 : value;
}

bool LinuxDefaultsStore::boolean(const QString &key) const
{
    const QString value = text(key).value_or(QString()).toLower();
    return value == u"true" || value == u"yes" || value == u"on" || value == u"1";
}

qint64 LinuxDefaultsStore::integer(const QString &key) const
{
    bool isInteger = false;
    const qint64 exact = text(key).value_or(QString()).toLongLong(&isInteger);
    if (isInteger)
        return exact;
    using Limits = std::numeric_limits<qint64>;
    const double value = number(key);
    if (value >= static_cast<double>(Limits::max()))
        return Limits::max();
    if (value <= static_cast<double>(Limits::min()))
        return Limits::min();
    return static_cast<qint64>(value);
}

void LinuxDefaultsStore::setText(const QString &key, const QString &value)
{
    // What is there already costs no thread, at each start for one.
    if (m_problem.value().isEmpty() && setOrStored(key) == value)
        return;
    m_set.insert(key, value);
    m_writer.set(key, value);
}

void LinuxDefaultsStore::setNumber(const QString &key, double value)
{
    setText(key, QString::number(value, 'g', QLocale::FloatingPointShortest));
}

void LinuxDefaultsStore::setBoolean(const QString &key, bool value)
{
    setText(key, value ? QStringLiteral("true") : QStringLiteral("false"));
}

void LinuxDefaultsStore::setInteger(const QString &key, qint64 value)
{
    setText(key, QString::number(value));
}
