#include "Services/HotkeyManager.h"

#include "Platform/HotkeyRegistrar.h"

#include <utility>

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
    m_registrar.bind({keyCode, modifiers}, std::move(callback));
}

void HotkeyManager::unregister()
{
    m_registrar.unbind();
}
