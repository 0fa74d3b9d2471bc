#include "Services/HotkeyRecorder.h"

#include "Model/SettingsViewModel.h"
#include "Platform/KeyDownMonitor.h"
#include "Services/HotkeyText.h"

namespace {

constexpr std::uint32_t Qualifying =
    EventModifier::command | EventModifier::option | EventModifier::control;

} // namespace

HotkeyRecorder::HotkeyRecorder(SettingsViewModel &settings, KeyDownMonitor *monitor,
                               QObject *parent)
    : QObject(parent)
    , m_settings(settings)
    , m_monitor(monitor)
{
    m_isSet.setBinding(
        [this] { return m_settings.hotkeyKeyCode() != 0 || m_settings.hotkeyModifiers() != 0; });
    m_displayText.setBinding([this] {
        return m_isSet
            ? modifierSymbols(m_settings.hotkeyModifiers()) + keyName(m_settings.hotkeyKeyCode())
            : QStringLiteral("Not set");
    });
    m_canClear.setBinding([this] { return !m_isRecording && m_settings.hotkeyKeyCode() != 0; });
}

HotkeyRecorder::~HotkeyRecorder()
{
    cancel();
}

void HotkeyRecorder::record()
{
    if (m_isRecording)
        return;
    m_isRecording = true;
    if (m_monitor != nullptr)
        m_monitor->install([this](const KeyDown &key) { return capture(key); });
}

void HotkeyRecorder::cancel()
{
    if (!m_isRecording)
        return;
    if (m_monitor != nullptr)
        m_monitor->remove();
    m_isRecording = false;
}

void HotkeyRecorder::clear()
{
    m_settings.setHotkeyKeyCode(0);
    m_settings.setHotkeyModifiers(0);
}

bool HotkeyRecorder::capture(const KeyDown &key)
{
    if ((key.flags & Qualifying) == 0 || key.keyCode == KeyDown::NoKeyCode)
        return false;
    m_settings.setHotkeyKeyCode(key.keyCode);
    m_settings.setHotkeyModifiers(carbonModifiers(key.flags));
    cancel();
    return true;
}
