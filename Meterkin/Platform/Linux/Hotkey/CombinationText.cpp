#include "Platform/Linux/Hotkey/CombinationText.h"

#include <QLatin1StringView>

#include <xkbcommon/xkbcommon.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

struct ModifierName {
    std::uint32_t bit;
    QLatin1StringView text;
    QLatin1StringView trigger;
};

constexpr ModifierName Modifiers[] = {
    {CarbonModifier::command, QLatin1StringView("Super+"), QLatin1StringView("LOGO+")},
    {CarbonModifier::control, QLatin1StringView("Ctrl+"), QLatin1StringView("CTRL+")},
    {CarbonModifier::option, QLatin1StringView("Alt+"), QLatin1StringView("ALT+")},
    {CarbonModifier::shift, QLatin1StringView("Shift+"), QLatin1StringView("SHIFT+")},
};

// Keys whose symbol's name is not what users call them.
constexpr std::pair<std::uint32_t, QLatin1StringView> Names[] = {
    {XKB_KEY_Escape, QLatin1StringView("Esc")},
    {XKB_KEY_space, QLatin1StringView("Space")},
    {XKB_KEY_BackSpace, QLatin1StringView("Backspace")},
    {XKB_KEY_Page_Up, QLatin1StringView("Page Up")},
    {XKB_KEY_Page_Down, QLatin1StringView("Page Down")},
    {XKB_KEY_KP_Enter, QLatin1StringView("Keypad Enter")},
    {XKB_KEY_XF86AudioMute, QLatin1StringView("Mute")},
    {XKB_KEY_XF86AudioLowerVolume, QLatin1StringView("Volume Down")},
    {XKB_KEY_XF86AudioRaiseVolume, QLatin1StringView("Volume Up")},
};

// The accents of dead keys, from XKB_KEY_dead_grave on.
constexpr std::u16string_view Accents = u"`´^~¯˘˙¨˚˝ˇ¸˛";

QString symbolName(std::uint32_t keysym)
{
    char name[64];
    return xkb_keysym_get_name(keysym, name, sizeof name) > 0 ? QString::fromLatin1(name)
                                                              : QString();
}

QString keyText(std::uint32_t keysym)
{
    const auto *const named =
        std::ranges::find(Names, keysym, [](const auto &pair) { return pair.first; });
    if (named != std::end(Names))
        return named->second;
    if (keysym >= XKB_KEY_dead_grave && keysym - XKB_KEY_dead_grave < Accents.size())
        return QString(Accents[keysym - XKB_KEY_dead_grave]);
    const char32_t character = xkb_keysym_to_utf32(keysym);
    if (!QChar::isPrint(character))
        return symbolName(keysym);
    const bool isOnKeypad = keysym >= XKB_KEY_KP_Space && keysym <= XKB_KEY_KP_Equal;
    return (isOnKeypad ? QStringLiteral("Keypad %1") : QStringLiteral("%1"))
        .arg(QChar::fromUcs4(QChar::toUpper(character)));
}

QString modifierText(std::uint32_t modifiers, QLatin1StringView ModifierName::*form)
{
    QString text;
    for (const ModifierName &modifier : Modifiers) {
        if ((modifiers & modifier.bit) != 0)
            text += modifier.*form;
    }
    return text;
}

} // namespace

QString combinationText(const HotkeyCombination &combination, std::uint32_t keysym)
{
    return modifierText(combination.modifiers, &ModifierName::text)
        + (keysym != XKB_KEY_NoSymbol ? keyText(keysym)
                                      : QStringLiteral("Key(%1)").arg(combination.keyCode));
}

QString shortcutTrigger(const HotkeyCombination &combination, std::uint32_t keysym)
{
    if (keysym == XKB_KEY_NoSymbol)
        return QString();
    return modifierText(combination.modifiers, &ModifierName::trigger) + symbolName(keysym);
}
