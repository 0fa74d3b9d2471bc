#include "Platform/Linux/KeyPositions.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr std::uint32_t X11Offset = 8;

struct KeyPosition {
    std::uint32_t evdevCode;
    std::uint32_t virtualKeyCode;
};

constexpr KeyPosition Keys[] = {
    // the row of Esc
    {1, 53},
    {59, 122},
    {60, 120},
    {61, 99},
    {62, 118},
    {63, 96},
    {64, 97},
    {65, 98},
    {66, 100},
    {67, 101},
    {68, 109},
    {87, 103},
    {88, 111},
    {183, 105},
    {184, 107},
    {185, 113},
    {186, 106},
    {187, 64},
    {188, 79},
    {189, 80},
    {190, 90},
    // the row of digits
    {41, 50},
    {2, 18},
    {3, 19},
    {4, 20},
    {5, 21},
    {6, 23},
    {7, 22},
    {8, 26},
    {9, 28},
    {10, 25},
    {11, 29},
    {12, 27},
    {13, 24},
    {14, 51},
    // from Tab
    {15, 48},
    {16, 12},
    {17, 13},
    {18, 14},
    {19, 15},
    {20, 17},
    {21, 16},
    {22, 32},
    {23, 34},
    {24, 31},
    {25, 35},
    {26, 33},
    {27, 30},
    {43, 42},
    // the home row
    {30, 0},
    {31, 1},
    {32, 2},
    {33, 3},
    {34, 5},
    {35, 4},
    {36, 38},
    {37, 40},
    {38, 37},
    {39, 41},
    {40, 39},
    {28, 36},
    // the lowest letters; first the extra key of ISO keyboards
    {86, 10},
    {44, 6},
    {45, 7},
    {46, 8},
    {47, 9},
    {48, 11},
    {49, 45},
    {50, 46},
    {51, 43},
    {52, 47},
    {53, 44},
    {57, 49},
    // the block of arrows; Insert is where Help is
    {110, 114},
    {111, 117},
    {102, 115},
    {107, 119},
    {104, 116},
    {109, 121},
    {103, 126},
    {105, 123},
    {108, 125},
    {106, 124},
    // the keypad
    {98, 75},
    {55, 67},
    {74, 78},
    {71, 89},
    {72, 91},
    {73, 92},
    {78, 69},
    {75, 86},
    {76, 87},
    {77, 88},
    {117, 81},
    {79, 83},
    {80, 84},
    {81, 85},
    {96, 76},
    {82, 82},
    {83, 65},
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
