#include "Platform/Linux/Hotkey/KeyboardLayout.h"

#include "Platform/Linux/Hotkey/CombinationText.h"

std::uint32_t LinuxKeyboardLayout::virtualKeyCode(std::uint32_t hardwareCode)
{
    return ::virtualKeyCode(hardwareCode);
}

std::uint32_t LinuxKeyboardLayout::keysym(std::uint32_t virtualKeyCode)
{
    return ansiKeysym(virtualKeyCode);
}

QString LinuxKeyboardLayout::write(const HotkeyCombination &combination)
{
    return combinationText(combination, keysym(combination.keyCode));
}
