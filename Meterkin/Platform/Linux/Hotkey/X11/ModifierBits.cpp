#include "Platform/Linux/Hotkey/X11/ModifierBits.h"

#include "Platform/HotkeyRegistrar.h"

#include <xcb/xcb.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>
#include <initializer_list>
#include <utility>

namespace {

constexpr int FirstFree = 3; // Mod1: those before it have a fixed meaning

/// The lowest bit when keys of several modifiers match: a grab takes exact bits.
std::uint16_t bitOf(const QList<X11ModifierKey> &keys, std::initializer_list<std::uint32_t> keysyms)
{
    int lowest = 8;
    for (const X11ModifierKey &key : keys) {
        if (key.modifier >= FirstFree && std::ranges::find(keysyms, key.keysym) != keysyms.end())
            lowest = std::min(lowest, key.modifier);
    }
    return lowest < 8 ? static_cast<std::uint16_t>(1U << lowest) : std::uint16_t{0};
}

} // namespace

std::optional<std::uint16_t> X11ModifierBits::mask(std::uint32_t carbonModifiers) const
{
    const std::pair<std::uint32_t, unsigned> bits[] = {
        {CarbonModifier::shift, XCB_MOD_MASK_SHIFT},
        {CarbonModifier::control, XCB_MOD_MASK_CONTROL},
        {CarbonModifier::option, option},
        {CarbonModifier::command, command},
    };
    unsigned mask = 0;
    for (const auto &[modifier, bit] : bits) {
        if ((carbonModifiers & modifier) == 0)
            continue;
        if (bit == 0)
            return std::nullopt;
        mask |= bit;
    }
    return static_cast<std::uint16_t>(mask);
}

X11ModifierBits x11ModifierBits(const QList<X11ModifierKey> &keys)
{
    const unsigned locks =
        XCB_MOD_MASK_LOCK | bitOf(keys, {XKB_KEY_Num_Lock}) | bitOf(keys, {XKB_KEY_Scroll_Lock});
    return {bitOf(keys, {XKB_KEY_Alt_L, XKB_KEY_Alt_R}),
            bitOf(keys, {XKB_KEY_Super_L, XKB_KEY_Super_R}), static_cast<std::uint16_t>(locks)};
}

QList<std::uint16_t> lockCombinations(std::uint16_t locks)
{
    QList<std::uint16_t> combinations;
    std::uint16_t combination = locks;
    while (combination != 0) {
        combinations.append(combination);
        combination = static_cast<std::uint16_t>((combination - 1) & locks);
    }
    combinations.append(0);
    return combinations;
}
