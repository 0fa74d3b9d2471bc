#include "Services/HotkeyManager.h"

#include "Platform/FourCharacterCode.h"
#include "Platform/HotkeyRegistrar.h"

#include <utility>

namespace {

constexpr HotkeyIdentifier OurHotkey{fourCharacterCode("MKHT"), 1};

} // namespace

HotkeyManager::HotkeyManager(HotkeyRegistrar *registrar)
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
    unregister();
    if (m_registrar == nullptr || !m_registrar->installPressHandler(std::move(callback)))
        return;
    m_isBound = m_registrar->registerHotkey({keyCode, modifiers}, OurHotkey);
    if (!m_isBound)
        m_registrar->removePressHandler();
}

void HotkeyManager::unregister()
{
    if (!std::exchange(m_isBound, false))
        return;
    m_registrar->unregisterHotkey();
    m_registrar->removePressHandler();
}
