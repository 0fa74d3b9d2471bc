#include "Platform/Linux/Storage/DefaultsStore.h"

#include "Platform/Log.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QStandardPaths>

#include <cmath>
#include <limits>

#include <sys/stat.h>
#include <unistd.h>

// Not QSettings: it waits for half a minute on a stale lock, drops lines that it cannot parse and
// writes only from the event loop.

namespace {

/// For a folder that does not exist, the one that it would be made in counts.
bool belongsToAnother(QString folder)
{
    struct stat status { };
    while (stat(QFile::encodeName(folder).constData(), &status) != 0) {
        if (folder == QStringLiteral("/"))
            return false;
        folder = QFileInfo(folder).path();
    }
    return status.st_uid != geteuid();
}

// A value may stand in double quotes, which keep the blanks around it. In it \n, \r and \\ mean a
// line feed, a carriage return and a backslash.

bool isQuoted(QByteArrayView value)
{
    return value.size() >= 2 && value.startsWith('"') && value.endsWith('"');
}

QString decoded(QByteArrayView raw)
{
    if (isQuoted(raw))
        raw = raw.sliced(1, raw.size() - 2);
    QByteArray value;
    value.reserve(raw.size());
    for (qsizetype i = 0; i < raw.size(); ++i) {
        const char next = raw[i] == '\\' && i + 1 < raw.size() ? raw[i + 1] : '\0';
        if (next == 'n' || next == 'r' || next == '\\') {
            value += next == 'n' ? '\n' : next == 'r' ? '\r' : '\\';
            ++i;
        } else {
            value += raw[i];
        }
    }
    return QString::fromUtf8(value);
}

QByteArray encoded(const QString &value)
{
    QByteArray raw = value.toUtf8();
    raw.replace("\\", "\\\\").replace("\n", "\\n").replace("\r", "\\r");
    if (isQuoted(raw) || QByteArrayView(raw).trimmed() != raw)
        raw = '"' + raw + '"';
    return raw;
}

} // namespace

LinuxDefaultsStore::LinuxDefaultsStore(const QString &path)
    : LinuxDefaultsStore(path, readTextFile(path, SettingsSizeLimit))
{
}

LinuxDefaultsStore::LinuxDefaultsStore(const QString &path, const TextFileContent &content)
    : m_path(path)
    , m_file(content.text)
    , m_problem(translatedProblem(content.problem))
    , m_writer(m_path, content.problem,
               [this](const QString &problem) { m_problem = translatedProblem(problem); })
{
    qCDebug(logStorage) << "settings are in" << m_path;
}

QString LinuxDefaultsStore::defaultPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + QStringLiteral("/meterkin/meterkin.conf");
}

bool LinuxDefaultsStore::wouldTakeSettingsOver()
{
    if (geteuid() != 0)
        return false;
    const QString home = QDir::homePath();
    const QString settings =
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return belongsToAnother(settings)
        || (settings.startsWith(home + u'/') && belongsToAnother(home));
}

void LinuxDefaultsStore::registerDefaults(const QVariantMap &defaults)
{
    m_defaults.insert(defaults);
}

std::optional<QString> LinuxDefaultsStore::setOrStored(const QString &key) const
{
    if (const auto set = m_set.find(key); set != m_set.end())
        return *set;
    const std::optional<QByteArrayView> raw = m_file.value(key.toUtf8());
    return raw ? std::optional(decoded(*raw)) : std::nullopt;
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
    // toDouble() gives an infinity for a number that is too large, and 0 for other text.
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
    // An equal value starts no thread, as at each launch.
    if (m_problem.value().isEmpty() && setOrStored(key) == value)
        return;
    m_set.insert(key, value);
    m_writer.set(key.toUtf8(), encoded(value));
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
