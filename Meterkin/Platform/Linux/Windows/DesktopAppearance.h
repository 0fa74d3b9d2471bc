#pragma once

#include "Platform/DesktopAppearance.h"
#include "Platform/Linux/Bus/Name.h"

#include <QDBusVariant>
#include <QStringView>

#include <map>
#include <tuple>
#include <utility>

/// Whether a theme with such a name is a dark one: it has "dark", in any case, as a word part of
/// its own, as in "Adwaita-dark" or "BreezeDark".
bool isDarkThemeName(QStringView name);

/// The desktop's colour scheme, text size and animations as its portal tells them, and as last told
/// when it goes away. Without a portal texts are unscaled, and as long as it prefers no scheme the
/// theme's name decides. Main thread only.
class LinuxDesktopAppearance : public DesktopAppearance {
    Q_OBJECT

public:
    /// Whether the window system's own scale says how large texts are to be, as it does on X11, or
    /// the portal has to.
    enum class TextScale { FromWindowSystem, FromPortal };

    /// The bus outlives it.
    LinuxDesktopAppearance(BusConnection &bus, TextScale source, QObject *parent = nullptr);

    bool isDark() const override;
    double textScale() const override { return m_textScale; }
    bool reducesMotion() const override;

    /// The theme that the desktop names apart from the portal; light when empty.
    void setThemeName(QStringView name);
    /// Whether programs are to animate, as the desktop says apart from the portal.
    void setAnimated(bool isAnimated);

private slots:
    void take(const QString &group, const QString &key, const QDBusVariant &value);

private:
    /// The portal's numbers; any other means no preference, too.
    enum class Scheme : uint { NoPreference = 0, Dark = 1, Light = 2 };

    /// All that change() may change.
    auto look() const { return std::tuple(isDark(), m_textScale, reducesMotion()); }
    /// Does that, and says so when it changes the look.
    template <typename Change> void apply(Change change);
    void follow();
    void read();
    void read(const QString &group, const QString &key);

    BusConnection &m_bus;
    TextScale m_source;
    BusName m_portal;
    std::map<std::pair<QString, QString>, RepeatedCall> m_reads; ///< by group and key
    Scheme m_scheme = Scheme::NoPreference;
    bool m_isThemeDark = false;
    bool m_isMotionReduced = false; ///< by the portal's own setting
    bool m_isAnimated = true; ///< by that of the desktop behind the portal
    bool m_isThemeAnimated = true;
    double m_textScale = 1.0;
};
