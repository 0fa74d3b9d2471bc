#include "Platform/Linux/Display/DesktopAppearance.h"

#include "Platform/Linux/Bus/DesktopPortal.h"

#include <algorithm>
#include <cmath>

namespace {

const QString interface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const QString schemeKey = QStringLiteral("color-scheme");
const QString motionKey = QStringLiteral("reduced-motion");
const QString interfaceGroup = QStringLiteral("org.gnome.desktop.interface");
const QString animationKey = QStringLiteral("enable-animations");
const QString textKey = QStringLiteral("text-scaling-factor");

constexpr uint ReducedMotion = 1; // the portal's number; all others mean no preference
constexpr double LeastTextScale = 0.5; // the range that desktops offer
constexpr double MostTextScale = 3.0;

QDBusMessage readCall(const QString &group, const QString &key)
{
    return QDBusMessage::createMethodCall(DesktopPortal::service, DesktopPortal::path, interface,
                                          QStringLiteral("Read"))
        << group << key;
}

/// Read() answers with a variant in a variant, the signal has one.
QVariant unwrapped(QVariant value)
{
    while (value.metaType() == QMetaType::fromType<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

/// Whether one word ends and another begins between two characters.
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
        // Not "Darker": such a variant is mostly a light theme with dark title bars.
        if (isBreak(before, name[begin]) && isBreak(name[end - 1], after))
            return true;
    }
    return false;
}

LinuxDesktopAppearance::LinuxDesktopAppearance(BusConnection &bus, TextScale source,
                                               QObject *parent)
    : DesktopAppearance(parent)
    , m_bus(bus)
    , m_source(source)
    , m_portal(bus, DesktopPortal::service)
{
    // Without it Qt refuses to connect the slot to the bus.
    qRegisterMetaType<QDBusVariant>();
    connect(&bus, &BusConnection::connected, this, &LinuxDesktopAppearance::follow);
    connect(&m_portal, &BusName::changed, this, [this](const std::optional<QString> &previous) {
        // The first read starts a portal that does not run; one that ends is left alone.
        if (m_portal.owner() && (!previous || !m_portal.owner()->isEmpty()))
            read();
    });
    if (bus.connection())
        follow();
}

bool LinuxDesktopAppearance::isDark() const
{
    return prefersDark().value_or(m_isThemeDark);
}

std::optional<bool> LinuxDesktopAppearance::prefersDark() const
{
    if (m_scheme != Scheme::Dark && m_scheme != Scheme::Light)
        return std::nullopt;
    return m_scheme == Scheme::Dark;
}

bool LinuxDesktopAppearance::reducesMotion() const
{
    return m_isMotionReduced || !m_isAnimated || !m_isThemeAnimated;
}

template <typename Change> void LinuxDesktopAppearance::modify(Change change)
{
    const auto before = look();
    change();
    if (look() != before)
        emit changed();
}

void LinuxDesktopAppearance::setThemeName(QStringView name)
{
    modify([&] { m_isThemeDark = isDarkThemeName(name); });
}

void LinuxDesktopAppearance::setAnimated(bool isAnimated)
{
    modify([&] { m_isThemeAnimated = isAnimated; });
}

void LinuxDesktopAppearance::follow()
{
    QDBusConnection connection = *m_bus.connection();
    // From any sender: for a sender's name Qt would wait for the bus.
    connection.connect(QString(), DesktopPortal::path, interface, QStringLiteral("SettingChanged"),
                       this, SLOT(apply(QString, QString, QDBusVariant)));
}

void LinuxDesktopAppearance::read()
{
    read(appearanceGroup, schemeKey);
    read(appearanceGroup, motionKey);
    read(interfaceGroup, animationKey);
    if (m_source == TextScale::FromPortal)
        read(interfaceGroup, textKey);
}

void LinuxDesktopAppearance::read(const QString &group, const QString &key)
{
    RepeatedCall &call = m_reads.try_emplace({group, key}, m_bus).first->second;
    call.send<QVariant>(readCall(group, key), [this, group, key](const BusReply<QVariant> &reply) {
        if (reply.isValid())
            apply(group, key, QDBusVariant(reply.value()));
    });
}

void LinuxDesktopAppearance::apply(const QString &group, const QString &key,
                                   const QDBusVariant &value)
{
    const QVariant content = unwrapped(value.variant());
    modify([&] {
        if (group == appearanceGroup && key == schemeKey) {
            m_scheme = static_cast<Scheme>(content.toUInt());
        } else if (group == appearanceGroup && key == motionKey) {
            m_isMotionReduced = content.toUInt() == ReducedMotion;
        } else if (group == interfaceGroup && key == animationKey) {
            m_isAnimated = content.toBool();
        } else if (group == interfaceGroup && key == textKey && m_source == TextScale::FromPortal) {
            const double factor = content.toDouble();
            m_textScale = std::isfinite(factor) && factor > 0.0
                ? std::clamp(factor, LeastTextScale, MostTextScale)
                : 1.0;
        }
    });
}
