#include "Services/HotkeyManager.h"

#include "Platform/macOS/Sensors/FourCharacterCode.h"
#include "Platform/HotkeyRegistrar.h"

#include <utility>

namespace {

constexpr HotkeyIdentifier OurHotkey{fourCharacterCode("MKHT"), 1};

} // namespace

HotkeyManager::HotkeyManager(HotkeyRegistrar &registrar)
    : m_registrar(registrar)
{
}

HotkeyManager::~HotkeyManager()
{
    unregister();
}

void HotkeyManager::registerHotkey(std::uint32_t keyCode, std::uint32_t modifiers,
                                   std::function<void()> callback)
{
    m_registrar.bind({keyCode, modifiers}, OurHotkey, std::move(callback));
}

void HotkeyManager::unregister()
{
    m_registrar.unbind();
}
