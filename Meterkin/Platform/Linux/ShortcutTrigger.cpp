#include "Platform/Linux/ShortcutTrigger.h"

#include <QLatin1StringView>

#include <algorithm>
#include <iterator>

namespace {

struct KeySymbol {
    std::uint32_t virtualKeyCode;
    QLatin1StringView name;
};

// What the key gives without modifiers on the ANSI layout, by the names of the X keyboard
// extension.
constexpr KeySymbol Symbols[] = {
    {0, QLatin1StringView("a")},
    {1, QLatin1StringView("s")},
    {2, QLatin1StringView("d")},
    {3, QLatin1StringView("f")},
    {4, QLatin1StringView("h")},
    {5, QLatin1StringView("g")},
    {6, QLatin1StringView("z")},
    {7, QLatin1StringView("x")},
    {8, QLatin1StringView("c")},
    {9, QLatin1StringView("v")},
    {10, QLatin1StringView("less")},
    {11, QLatin1StringView("b")},
    {12, QLatin1StringView("q")},
    {13, QLatin1StringView("w")},
    {14, QLatin1StringView("e")},
    {15, QLatin1StringView("r")},
    {16, QLatin1StringView("y")},
    {17, QLatin1StringView("t")},
    {18, QLatin1StringView("1")},
    {19, QLatin1StringView("2")},
    {20, QLatin1StringView("3")},
    {21, QLatin1StringView("4")},
    {22, QLatin1StringView("6")},
    {23, QLatin1StringView("5")},
    {24, QLatin1StringView("equal")},
    {25, QLatin1StringView("9")},
    {26, QLatin1StringView("7")},
    {27, QLatin1StringView("minus")},
    {28, QLatin1StringView("8")},
    {29, QLatin1StringView("0")},
    {30, QLatin1StringView("bracketright")},
    {31, QLatin1StringView("o")},
    {32, QLatin1StringView("u")},
    {33, QLatin1StringView("bracketleft")},
    {34, QLatin1StringView("i")},
    {35, QLatin1StringView("p")},
    {36, QLatin1StringView("Return")},
    {37, QLatin1StringView("l")},
    {38, QLatin1StringView("j")},
    {39, QLatin1StringView("apostrophe")},
    {40, QLatin1StringView("k")},
    {41, QLatin1StringView("semicolon")},
    {42, QLatin1StringView("backslash")},
    {43, QLatin1StringView("comma")},
    {44, QLatin1StringView("slash")},
    {45, QLatin1StringView("n")},
    {46, QLatin1StringView("m")},
    {47, QLatin1StringView("period")},
    {48, QLatin1StringView("Tab")},
    {49, QLatin1StringView("space")},
    {50, QLatin1StringView("grave")},
    {51, QLatin1StringView("BackSpace")},
    {53, QLatin1StringView("Escape")},
    {64, QLatin1StringView("F17")},
    {65, QLatin1StringView("KP_Decimal")},
    {67, QLatin1StringView("KP_Multiply")},
    {69, QLatin1StringView("KP_Add")},
    {75, QLatin1StringView("KP_Divide")},
    {76, QLatin1StringView("KP_Enter")},
    {78, QLatin1StringView("KP_Subtract")},
    {79, QLatin1StringView("F18")},
    {80, QLatin1StringView("F19")},
    {81, QLatin1StringView("KP_Equal")},
    {82, QLatin1StringView("KP_0")},
    {83, QLatin1StringView("KP_1")},
    {84, QLatin1StringView("KP_2")},
    {85, QLatin1StringView("KP_3")},
    {86, QLatin1StringView("KP_4")},
    {87, QLatin1StringView("KP_5")},
    {88, QLatin1StringView("KP_6")},
    {89, QLatin1StringView("KP_7")},
    {90, QLatin1StringView("F20")},
    {91, QLatin1StringView("KP_8")},
    {92, QLatin1StringView("KP_9")},
    {96, QLatin1StringView("F5")},
    {97, QLatin1StringView("F6")},
    {98, QLatin1StringView("F7")},
    {99, QLatin1StringView("F3")},
    {100, QLatin1StringView("F8")},
    {101, QLatin1StringView("F9")},
    {103, QLatin1StringView("F11")},
    {105, QLatin1StringView("F13")},
    {106, QLatin1StringView("F16")},
    {107, QLatin1StringView("F14")},
    {109, QLatin1StringView("F10")},
    {111, QLatin1StringView("F12")},
    {113, QLatin1StringView("F15")},
    {114, QLatin1StringView("Insert")},
    {115, QLatin1StringView("Home")},
    {116, QLatin1StringView("Page_Up")},
    {117, QLatin1StringView("Delete")},
    {118, QLatin1StringView("F4")},
    {119, QLatin1StringView("End")},
    {120, QLatin1StringView("F2")},
    {121, QLatin1StringView("Page_Down")},
    {122, QLatin1StringView("F1")},
    {123, QLatin1StringView("Left")},
    {124, QLatin1StringView("Right")},
    {125, QLatin1StringView("Down")},
    {126, QLatin1StringView("Up")},
};

static_assert(std::ranges::is_sorted(Symbols, {}, &KeySymbol::virtualKeyCode));

struct ModifierName {
    std::uint32_t bit;
    QLatin1StringView name;
};

constexpr ModifierName Modifiers[] = {
    {CarbonModifier::control, QLatin1StringView("CTRL+")},
    {CarbonModifier::option, QLatin1StringView("ALT+")},
    {CarbonModifier::shift, QLatin1StringView("SHIFT+")},
    {CarbonModifier::command, QLatin1StringView("LOGO+")},
};

} // namespace

QString shortcutTrigger(const HotkeyCombination &combination)
{
    const auto *const key =
        std::ranges::lower_bound(Symbols, combination.keyCode, {}, &KeySymbol::virtualKeyCode);
    if (key == std::end(Symbols) || key->virtualKeyCode != combination.keyCode)
        return QString();
    QString trigger;
    for (const ModifierName &modifier : Modifiers) {
        if ((combination.modifiers & modifier.bit) != 0)
            trigger += modifier.name;
    }
    return trigger + key->name;
}
