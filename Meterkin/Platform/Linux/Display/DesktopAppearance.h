#pragma once

#include "Platform/DesktopAppearance.h"
#include "Platform/Linux/Bus/Name.h"

#include <QDBusVariant>
#include <QStringView>

#include <map>
#include <optional>
#include <tuple>
#include <utility>

/// Whether "dark" is one of the words that the theme's name is made of, as in "Adwaita-dark" or
/// "BreezeDark".
bool isDarkThemeName(QStringView name);

/// The desktop's colour scheme, text size and animations: org.freedesktop.portal.Settings of
/// xdg-desktop-portal. The values stay when the portal ends. Without a portal texts are unscaled,
/// and without a preferred scheme the theme's name decides. Main thread only.
class LinuxDesktopAppearance : public DesktopAppearance {
    Q_OBJECT

public:
    /// Where the size of texts comes from: the window system's scale, as on X11, or the portal.
    enum class TextScale { FromWindowSystem, FromPortal };

    /// The bus outlives it.
    LinuxDesktopAppearance(BusConnection &bus, TextScale source, QObject *parent = nullptr);

    bool isDark() const override;
    double textScale() const override { return m_textScale; }
    bool reducesMotion() const override;
    /// What the desktop says itself, if anything: a theme's name does not count.
    std::optional<bool> prefersDark() const;

    /// The theme that the desktop names elsewhere than in the portal; light when empty.
    void setThemeName(QStringView name);
    /// The desktop's setting for animations elsewhere than in the portal.
    void setAnimated(bool isAnimated);

private slots:
    void apply(const QString &group, const QString &key, const QDBusVariant &value);

private:
    /// The portal's numbers; all others mean no preference, too.
    enum class Scheme : uint { NoPreference = 0, Dark = 1, Light = 2 };

    auto look() const { return std::tuple(isDark(), m_scheme, m_textScale, reducesMotion()); }
    /// Emits changed() when `change` changes the look.
    template <typename Change> void modify(Change change);
    void follow();
    void read();
    void read(const QString &group, const QString &key);

    BusConnection &m_bus;
    TextScale m_source;
    BusName m_portal;
    std::map<std::pair<QString, QString>, RepeatedCall> m_reads; ///< by group and key
    Scheme m_scheme = Scheme::NoPreference;
    bool m_isThemeDark = false;
    bool m_isMotionReduced = false; ///< the portal's own setting
    bool m_isAnimated = true; ///< the desktop's setting that the portal passes on
    bool m_isThemeAnimated = true; ///< the setting elsewhere than in the portal
    double m_textScale = 1.0;
};
