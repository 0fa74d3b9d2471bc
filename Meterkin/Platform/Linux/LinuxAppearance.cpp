#include "Platform/Linux/LinuxAppearance.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const QString schemeKey = QStringLiteral("color-scheme");
const QString textGroup = QStringLiteral("org.gnome.desktop.interface");
const QString textKey = QStringLiteral("text-scaling-factor");

constexpr double LeastTextScale = 0.5; // what desktops offer, and a bound for what they may send
constexpr double MostTextScale = 3.0;

QDBusMessage readCall(const QString &group, const QString &key)
{
    return QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("Read"))
        << group << key;
}

/// Read() wraps its answer in one variant more than the signal does.
QVariant unwrapped(QVariant value)
{
    while (value.metaType() == QMetaType::fromType<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

/// Whether one word part ends and another begins between two characters.
bool isBreak(QChar left, QChar right)
{
    return !left.isLetter() || !right.isLetter() || (left.isLower() && right.isUpper());
}

} // namespace

bool isDarkThemeName(QStringView name)
{
    const QStringView word = u"dark";
    qsizetype begin = name.indexOf(word, 0, Qt::CaseInsensitive);
    for (; begin >= 0; begin = name.indexOf(word, begin + 1, Qt::CaseInsensitive)) {
        const qsizetype end = begin + word.size();
        const QChar before = begin > 0 ? name[begin - 1] : QChar();
        const QChar after = end < name.size() ? name[end] : QChar();
        // Nothing longer: a "Darker" variant is mostly a light theme with dark title bars.
        if (isBreak(before, name[begin]) && isBreak(name[end - 1], after))
            return true;
    }
    return false;
}

LinuxAppearance::LinuxAppearance(MessageBus &bus, TextScale source, QObject *parent)
    : DesktopAppearance(parent)
    , m_bus(bus)
    , m_source(source)
    , m_askForScheme(bus,
                     [this](const QDBusMessage &reply) {
                         return takeReply(appearanceGroup, schemeKey, reply);
                     })
    , m_askForTextScale(
          bus, [this](const QDBusMessage &reply) { return takeReply(textGroup, textKey, reply); })
{
    // Connecting the slot to the bus fails as long as nobody has used this type.
    qRegisterMetaType<QDBusVariant>();
    connect(&bus, &MessageBus::connected, this, &LinuxAppearance::follow);
    connect(&bus, &MessageBus::disconnected, this, [this] { m_portal.reset(); });
    if (bus.connection())
        follow();
}

bool LinuxAppearance::isDark() const
{
    return m_scheme == Scheme::Dark || (m_scheme != Scheme::Light && m_isThemeDark);
}

void LinuxAppearance::setThemeName(QStringView name)
{
    const bool wasDark = isDark();
    m_isThemeDark = isDarkThemeName(name);
    if (isDark() != wasDark)
        emit changed();
}

void LinuxAppearance::follow()
{
    QDBusConnection connection = *m_bus.connection();
    m_portal = std::make_unique<QDBusServiceWatcher>(service, connection,
                                                     QDBusServiceWatcher::WatchForRegistration);
    connect(m_portal.get(), &QDBusServiceWatcher::serviceRegistered, this, [this] { ask(); });
    // From any sender: to name the sender here would mean to wait for the bus.
    connection.connect(QString(), path, interface, QStringLiteral("SettingChanged"), this,
                       SLOT(take(QString, QString, QDBusVariant)));
    ask();
}

void LinuxAppearance::ask()
{
    m_askForScheme.ask(readCall(appearanceGroup, schemeKey));
    if (m_source == TextScale::FromPortal)
        m_askForTextScale.ask(readCall(textGroup, textKey));
}

bool LinuxAppearance::takeReply(const QString &group, const QString &key, const QDBusMessage &reply)
{
    if (reply.type() == QDBusMessage::ReplyMessage)
        take(group, key, QDBusVariant(reply.arguments().value(0)));
    return !MessageBus::isTimeout(reply);
}

void LinuxAppearance::take(const QString &group, const QString &key, const QDBusVariant &value)
{
    const QVariant content = unwrapped(value.variant());
    bool differs = false;
    if (group == appearanceGroup && key == schemeKey) {
        const bool wasDark = isDark();
        m_scheme = static_cast<Scheme>(content.toUInt());
        differs = isDark() != wasDark;
    } else if (group == textGroup && key == textKey && m_source == TextScale::FromPortal) {
        const double told = content.toDouble();
        const double scale = std::isfinite(told) && told > 0.0
            ? std::clamp(told, LeastTextScale, MostTextScale)
            : 1.0;
        differs = std::exchange(m_textScale, scale) != scale;
    }
    if (differs)
        emit changed();
}
