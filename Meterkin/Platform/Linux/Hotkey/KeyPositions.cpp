#include "Platform/Linux/Hotkey/KeyPositions.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>
#include <iterator>

namespace {

constexpr std::uint32_t X11Offset = 8;

struct KeyPosition {
    std::uint32_t evdevCode;
    std::uint32_t virtualKeyCode;
    std::string_view name; ///< XKB's
    std::uint32_t ansiKeysym;
};

constexpr KeyPosition Keys[] = {
    // the row of Esc
    {1, 53, "ESC", XKB_KEY_Escape},
    {59, 122, "FK01", XKB_KEY_F1},
    {60, 120, "FK02", XKB_KEY_F2},
    {61, 99, "FK03", XKB_KEY_F3},
    {62, 118, "FK04", XKB_KEY_F4},
    {63, 96, "FK05", XKB_KEY_F5},
    {64, 97, "FK06", XKB_KEY_F6},
    {65, 98, "FK07", XKB_KEY_F7},
    {66, 100, "FK08", XKB_KEY_F8},
    {67, 101, "FK09", XKB_KEY_F9},
    {68, 109, "FK10", XKB_KEY_F10},
    {87, 103, "FK11", XKB_KEY_F11},
    {88, 111, "FK12", XKB_KEY_F12},
    {183, 105, "FK13", XKB_KEY_F13},
    {184, 107, "FK14", XKB_KEY_F14},
    {185, 113, "FK15", XKB_KEY_F15},
    {186, 106, "FK16", XKB_KEY_F16},
    {187, 64, "FK17", XKB_KEY_F17},
    {188, 79, "FK18", XKB_KEY_F18},
    {189, 80, "FK19", XKB_KEY_F19},
    {190, 90, "FK20", XKB_KEY_F20},
    // the row of digits
    {41, 50, "TLDE", XKB_KEY_grave},
    {2, 18, "AE01", XKB_KEY_1},
    {3, 19, "AE02", XKB_KEY_2},
    {4, 20, "AE03", XKB_KEY_3},
    {5, 21, "AE04", XKB_KEY_4},
    {6, 23, "AE05", XKB_KEY_5},
    {7, 22, "AE06", XKB_KEY_6},
    {8, 26, "AE07", XKB_KEY_7},
    {9, 28, "AE08", XKB_KEY_8},
    {10, 25, "AE09", XKB_KEY_9},
    {11, 29, "AE10", XKB_KEY_0},
    {12, 27, "AE11", XKB_KEY_minus},
    {13, 24, "AE12", XKB_KEY_equal},
    {14, 51, "BKSP", XKB_KEY_BackSpace},
    // from Tab
    {15, 48, "TAB", XKB_KEY_Tab},
    {16, 12, "AD01", XKB_KEY_q},
    {17, 13, "AD02", XKB_KEY_w},
    {18, 14, "AD03", XKB_KEY_e},
    {19, 15, "AD04", XKB_KEY_r},
    {20, 17, "AD05", XKB_KEY_t},
    {21, 16, "AD06", XKB_KEY_y},
    {22, 32, "AD07", XKB_KEY_u},
    {23, 34, "AD08", XKB_KEY_i},
    {24, 31, "AD09", XKB_KEY_o},
    {25, 35, "AD10", XKB_KEY_p},
    {26, 33, "AD11", XKB_KEY_bracketleft},
    {27, 30, "AD12", XKB_KEY_bracketright},
    {43, 42, "BKSL", XKB_KEY_backslash},
    // the home row
    {30, 0, "AC01", XKB_KEY_a},
    {31, 1, "AC02", XKB_KEY_s},
    {32, 2, "AC03", XKB_KEY_d},
    {33, 3, "AC04", XKB_KEY_f},
    {34, 5, "AC05", XKB_KEY_g},
    {35, 4, "AC06", XKB_KEY_h},
    {36, 38, "AC07", XKB_KEY_j},
    {37, 40, "AC08", XKB_KEY_k},
    {38, 37, "AC09", XKB_KEY_l},
    {39, 41, "AC10", XKB_KEY_semicolon},
    {40, 39, "AC11", XKB_KEY_apostrophe},
    {28, 36, "RTRN", XKB_KEY_Return},
    // the lowest row of letters, from the extra key of ISO keyboards
    {86, 10, "LSGT", XKB_KEY_less},
    {44, 6, "AB01", XKB_KEY_z},
    {45, 7, "AB02", XKB_KEY_x},
    {46, 8, "AB03", XKB_KEY_c},
    {47, 9, "AB04", XKB_KEY_v},
    {48, 11, "AB05", XKB_KEY_b},
    {49, 45, "AB06", XKB_KEY_n},
    {50, 46, "AB07", XKB_KEY_m},
    {51, 43, "AB08", XKB_KEY_comma},
    {52, 47, "AB09", XKB_KEY_period},
    {53, 44, "AB10", XKB_KEY_slash},
    {57, 49, "SPCE", XKB_KEY_space},
    // the block of arrows; the virtual key code of Insert is that of Help
    {110, 114, "INS", XKB_KEY_Insert},
    {111, 117, "DELE", XKB_KEY_Delete},
    {102, 115, "HOME", XKB_KEY_Home},
    {107, 119, "END", XKB_KEY_End},
    {104, 116, "PGUP", XKB_KEY_Page_Up},
    {109, 121, "PGDN", XKB_KEY_Page_Down},
    {103, 126, "UP", XKB_KEY_Up},
    {105, 123, "LEFT", XKB_KEY_Left},
    {108, 125, "DOWN", XKB_KEY_Down},
    {106, 124, "RGHT", XKB_KEY_Right},
    // the keypad
    {98, 75, "KPDV", XKB_KEY_KP_Divide},
    {55, 67, "KPMU", XKB_KEY_KP_Multiply},
    {74, 78, "KPSU", XKB_KEY_KP_Subtract},
    {71, 89, "KP7", XKB_KEY_KP_7},
    {72, 91, "KP8", XKB_KEY_KP_8},
    {73, 92, "KP9", XKB_KEY_KP_9},
    {78, 69, "KPAD", XKB_KEY_KP_Add},
    {75, 86, "KP4", XKB_KEY_KP_4},
    {76, 87, "KP5", XKB_KEY_KP_5},
    {77, 88, "KP6", XKB_KEY_KP_6},
    {117, 81, "KPEQ", XKB_KEY_KP_Equal},
    {79, 83, "KP1", XKB_KEY_KP_1},
    {80, 84, "KP2", XKB_KEY_KP_2},
    {81, 85, "KP3", XKB_KEY_KP_3},
    {96, 76, "KPEN", XKB_KEY_KP_Enter},
    {82, 82, "KP0", XKB_KEY_KP_0},
    {83, 65, "KPDL", XKB_KEY_KP_Decimal},
    // the others
    {127, 110, "COMP", XKB_KEY_Menu},
    {113, 74, "MUTE", XKB_KEY_XF86AudioMute},
    {114, 73, "VOL-", XKB_KEY_XF86AudioLowerVolume},
    {115, 72, "VOL+", XKB_KEY_XF86AudioRaiseVolume},
};

} // namespace

std::uint32_t virtualKeyCode(std::uint32_t hardwareCode)
{
    const auto *const key =
        std::ranges::find(Keys, hardwareCode - X11Offset, &KeyPosition::evdevCode);
    return key != std::end(Keys) ? key->virtualKeyCode : KeyDown::NoKeyCode;
}

std::optional<std::uint32_t> hardwareCode(std::uint32_t virtualKeyCode)
{
    const auto *const key = std::ranges::find(Keys, virtualKeyCode, &KeyPosition::virtualKeyCode);
    return key != std::end(Keys) ? std::optional(key->evdevCode + X11Offset) : std::nullopt;
}

std::string_view positionName(std::uint32_t virtualKeyCode)
{
    const auto *const key = std::ranges::find(Keys, virtualKeyCode, &KeyPosition::virtualKeyCode);
    return key != std::end(Keys) ? key->name : std::string_view();
}

std::uint32_t virtualKeyCodeNamed(std::string_view name)
{
    const auto *const key = std::ranges::find(Keys, name, &KeyPosition::name);
    return key != std::end(Keys) ? key->virtualKeyCode : KeyDown::NoKeyCode;
}

std::uint32_t ansiKeysym(std::uint32_t virtualKeyCode)
{
    const auto *const key = std::ranges::find(Keys, virtualKeyCode, &KeyPosition::virtualKeyCode);
    return key != std::end(Keys) ? key->ansiKeysym : XKB_KEY_NoSymbol;
}
