#include "Services/HotkeyText.h"

#include "Platform/HotkeyRegistrar.h"
#include "Platform/KeyDownMonitor.h"

#include <algorithm>
#include <iterator>

namespace {

struct NamedKey {
    std::uint32_t keyCode;
    const char *name;
};

constexpr NamedKey NamedKeys[] = {
    {0, "A"},    {1, "S"},    {2, "D"},    {3, "F"},       {4, "H"},     {5, "G"},     {6, "Z"},
    {7, "X"},    {8, "C"},    {9, "V"},    {11, "B"},      {12, "Q"},    {13, "W"},    {14, "E"},
    {15, "R"},   {16, "Y"},   {17, "T"},   {18, "1"},      {19, "2"},    {20, "3"},    {21, "4"},
    {22, "6"},   {23, "5"},   {25, "9"},   {26, "7"},      {28, "8"},    {29, "0"},    {31, "O"},
    {32, "U"},   {34, "I"},   {35, "P"},   {36, "Return"}, {37, "L"},    {38, "J"},    {40, "K"},
    {45, "N"},   {46, "M"},   {48, "Tab"}, {49, "Space"},  {53, "Esc"},  {96, "F5"},   {97, "F6"},
    {98, "F7"},  {99, "F3"},  {100, "F8"}, {101, "F9"},    {103, "F11"}, {109, "F10"}, {111, "F12"},
    {118, "F4"}, {120, "F2"}, {122, "F1"},
};

constexpr std::uint32_t DeviceIndependent = 0xFFFF0000;

} // namespace

QString keyName(std::uint32_t keyCode)
{
    const auto *const found = std::ranges::find(NamedKeys, keyCode, &NamedKey::keyCode);
    return found != std::end(NamedKeys) ? QString::fromLatin1(found->name)
                                        : QStringLiteral("Key(%1)").arg(keyCode);
}

QString modifierSymbols(std::uint32_t modifiers)
{
    QString symbols;
    if ((modifiers & CarbonModifier::control) != 0)
        symbols += u'^';
    if ((modifiers & CarbonModifier::option) != 0)
        symbols += u'⌥';
    if ((modifiers & CarbonModifier::shift) != 0)
        symbols += u'⇧';
    if ((modifiers & CarbonModifier::command) != 0)
        symbols += u'⌘';
    return symbols;
}

std::uint32_t carbonModifiers(std::uint32_t flags)
{
    flags &= DeviceIndependent;
    std::uint32_t modifiers = 0;
    if ((flags & EventModifier::shift) != 0)
        modifiers |= CarbonModifier::shift;
    if ((flags & EventModifier::control) != 0)
        modifiers |= CarbonModifier::control;
    if ((flags & EventModifier::option) != 0)
        modifiers |= CarbonModifier::option;
    if ((flags & EventModifier::command) != 0)
        modifiers |= CarbonModifier::command;
    return modifiers;
}
