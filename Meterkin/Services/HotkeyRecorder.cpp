#include "Services/HotkeyRecorder.h"

#include "Model/SettingsViewModel.h"
#include "Platform/KeyDownMonitor.h"
#include "Platform/KeyboardLayout.h"
#include "Services/HotkeyText.h"

#include <QStringList>

namespace {

constexpr std::uint32_t Qualifying =
    EventModifier::command | EventModifier::option | EventModifier::control;

QString obstacleText(HotkeyObstacle obstacle)
{
    switch (obstacle) {
    case HotkeyObstacle::None:
        break;
    case HotkeyObstacle::MissingKey:
        return HotkeyRecorder::tr("Not available now: this keyboard has no such key.");
    case HotkeyObstacle::OtherProgram:
        return HotkeyRecorder::tr("Not available now: another program uses it.");
    case HotkeyObstacle::NoService:
        return HotkeyRecorder::tr("Not available now: this desktop offers no global hotkeys.");
    case HotkeyObstacle::Refused:
        return HotkeyRecorder::tr("Not available now: the system has refused it.");
    }
    return QString();
}

} // namespace

HotkeyRecorder::HotkeyRecorder(SettingsViewModel &settings, const Dependencies &dependencies)
    : m_settings(settings)
    , m_dependencies(dependencies)
{
    m_combination.setBinding([this] {
        return HotkeyCombination{m_settings.hotkeyKeyCode(), m_settings.hotkeyModifiers()};
    });
    m_isSet.setBinding([this] { return m_combination.value() != HotkeyCombination(); });
    m_displayText.setBinding([this] { return m_isSet ? textOf(m_combination) : tr("Not set"); });
    m_warning.setBinding([this] { return warning(); });
    m_remark.setBinding([this] {
        QStringList lines{obstacleText(m_dependencies.registrar.obstacle()), m_warning};
        lines.removeAll(QString());
        return lines.join(u'\n');
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
    m_dependencies.monitor.install([this](const KeyDown &key) { return capture(key); });
}

void HotkeyRecorder::cancel()
{
    if (!m_isRecording)
        return;
    m_dependencies.monitor.remove();
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

QString HotkeyRecorder::textOf(const HotkeyCombination &combination) const
{
    return m_dependencies.layout != nullptr
        ? m_dependencies.layout->text(combination)
        : modifierSymbols(combination.modifiers) + keyName(combination.keyCode);
}

QString HotkeyRecorder::warning() const
{
    const HotkeyCombination combination = m_combination;
    if (combination.modifiers != CarbonModifier::control || combination.keyCode == 0)
        return QString();
    const QString key = textOf({combination.keyCode, 0});
    if (key.size() != 1 || !key.front().isLetter())
        return QString();
    return tr("While it is on, no other program gets %1.").arg(m_displayText);
}
