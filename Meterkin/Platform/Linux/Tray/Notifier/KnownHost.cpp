#include "Platform/Linux/Tray/Notifier/KnownHost.h"

#include <QLatin1StringView>

#include <array>

namespace {

using Kind = NotifierHostKind;
using Background = NotifierBackground;

constexpr qsizetype NameLength = 15; // characters that the kernel keeps

struct KnownHost {
    QLatin1StringView program;
    NotifierHost host;
};

constexpr std::array knownHosts{
    KnownHost{QLatin1StringView("ayatana-indicator-application-service"), {Kind::Label}},
    KnownHost{QLatin1StringView("gnome-shell"), {Kind::Label, Background::Black}},
    KnownHost{QLatin1StringView("indicator-application-service"), {Kind::Label}},
    KnownHost{QLatin1StringView("kded5"), {Kind::Square, Background::AsPlasmaTheme}},
    KnownHost{QLatin1StringView("kded6"), {Kind::Square, Background::AsPlasmaTheme}},
    KnownHost{QLatin1StringView("lxqt-panel"), {Kind::Titled}},
    KnownHost{QLatin1StringView("swaybar"), {Kind::Premultiplied}},
    KnownHost{QLatin1StringView("unity-panel-service"), {Kind::Label}},
    KnownHost{QLatin1StringView("waybar"), {Kind::Wide, Background::AsDesktop}},
};

/// Whether a process of that name runs the program, or the one that some systems wrap it in.
bool runs(const QString &process, QLatin1StringView program)
{
    const QString plain(program);
    return process == plain.left(NameLength)
        || process == QStringLiteral(".%1-wrapped").arg(plain).left(NameLength);
}

} // namespace

NotifierHost notifierHost(const QString &process)
{
    for (const KnownHost &known : knownHosts) {
        if (runs(process, known.program))
            return known.host;
    }
    return {};
}
