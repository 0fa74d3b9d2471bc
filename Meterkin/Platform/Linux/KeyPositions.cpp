#include "Platform/Linux/KeyPositions.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr std::uint32_t X11Offset = 8;

struct KeyPosition {
    std::uint32_t evdevCode;
    std::uint32_t virtualKeyCode;
    std::string_view name; ///< XKB's
};

constexpr KeyPosition Keys[] = {
    // the row of Esc
    {1, 53, "ESC"},
    {59, 122, "FK01"},
    {60, 120, "FK02"},
    {61, 99, "FK03"},
    {62, 118, "FK04"},
    {63, 96, "FK05"},
    {64, 97, "FK06"},
    {65, 98, "FK07"},
    {66, 100, "FK08"},
    {67, 101, "FK09"},
    {68, 109, "FK10"},
    {87, 103, "FK11"},
    {88, 111, "FK12"},
    {183, 105, "FK13"},
    {184, 107, "FK14"},
    {185, 113, "FK15"},
    {186, 106, "FK16"},
    {187, 64, "FK17"},
    {188, 79, "FK18"},
    {189, 80, "FK19"},
    {190, 90, "FK20"},
    // the row of digits
    {41, 50, "TLDE"},
    {2, 18, "AE01"},
    {3, 19, "AE02"},
    {4, 20, "AE03"},
    {5, 21, "AE04"},
    {6, 23, "AE05"},
    {7, 22, "AE06"},
    {8, 26, "AE07"},
    {9, 28, "AE08"},
    {10, 25, "AE09"},
    {11, 29, "AE10"},
    {12, 27, "AE11"},
    {13, 24, "AE12"},
    {14, 51, "BKSP"},
    // from Tab
    {15, 48, "TAB"},
    {16, 12, "AD01"},
    {17, 13, "AD02"},
    {18, 14, "AD03"},
    {19, 15, "AD04"},
    {20, 17, "AD05"},
    {21, 16, "AD06"},
    {22, 32, "AD07"},
    {23, 34, "AD08"},
    {24, 31, "AD09"},
    {25, 35, "AD10"},
    {26, 33, "AD11"},
    {27, 30, "AD12"},
    {43, 42, "BKSL"},
    // the home row
    {30, 0, "AC01"},
    {31, 1, "AC02"},
    {32, 2, "AC03"},
    {33, 3, "AC04"},
    {34, 5, "AC05"},
    {35, 4, "AC06"},
    {36, 38, "AC07"},
    {37, 40, "AC08"},
    {38, 37, "AC09"},
    {39, 41, "AC10"},
    {40, 39, "AC11"},
    {28, 36, "RTRN"},
    // the lowest letters; first the extra key of ISO keyboards
    {86, 10, "LSGT"},
    {44, 6, "AB01"},
    {45, 7, "AB02"},
    {46, 8, "AB03"},
    {47, 9, "AB04"},
    {48, 11, "AB05"},
    {49, 45, "AB06"},
    {50, 46, "AB07"},
    {51, 43, "AB08"},
    {52, 47, "AB09"},
    {53, 44, "AB10"},
    {57, 49, "SPCE"},
    // the block of arrows; Insert is where Help is
    {110, 114, "INS"},
    {111, 117, "DELE"},
    {102, 115, "HOME"},
    {107, 119, "END"},
    {104, 116, "PGUP"},
    {109, 121, "PGDN"},
    {103, 126, "UP"},
    {105, 123, "LEFT"},
    {108, 125, "DOWN"},
    {106, 124, "RGHT"},
    // the keypad
    {98, 75, "KPDV"},
    {55, 67, "KPMU"},
    {74, 78, "KPSU"},
    {71, 89, "KP7"},
    {72, 91, "KP8"},
    {73, 92, "KP9"},
    {78, 69, "KPAD"},
    {75, 86, "KP4"},
    {76, 87, "KP5"},
    {77, 88, "KP6"},
    {117, 81, "KPEQ"},
    {79, 83, "KP1"},
    {80, 84, "KP2"},
    {81, 85, "KP3"},
    {96, 76, "KPEN"},
    {82, 82, "KP0"},
    {83, 65, "KPDL"},
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
