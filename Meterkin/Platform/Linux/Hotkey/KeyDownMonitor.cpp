#include "Platform/Linux/Hotkey/KeyDownMonitor.h"

#include <QCoreApplication>
#include <QKeyEvent>

#include <algorithm>
#include <utility>

namespace {

constexpr int ModifierKeys[] = {
    Qt::Key_Shift,   Qt::Key_Control,    Qt::Key_Alt,         Qt::Key_AltGr,   Qt::Key_Meta,
    Qt::Key_Super_L, Qt::Key_Super_R,    Qt::Key_Hyper_L,     Qt::Key_Hyper_R, Qt::Key_CapsLock,
    Qt::Key_NumLock, Qt::Key_ScrollLock, Qt::Key_Mode_switch,
};

constexpr std::pair<Qt::KeyboardModifier, std::uint32_t> Flags[] = {
    {Qt::ShiftModifier, EventModifier::shift},
    {Qt::ControlModifier, EventModifier::control},
    {Qt::AltModifier, EventModifier::option},
    {Qt::MetaModifier, EventModifier::command},
};

std::uint32_t flagsOf(Qt::KeyboardModifiers modifiers)
{
    std::uint32_t flags = 0;
    for (const auto &[modifier, flag] : Flags)
        flags |= modifiers.testFlag(modifier) ? flag : 0;
    return flags;
}

} // namespace

LinuxKeyDownMonitor::LinuxKeyDownMonitor(FindKey findKey, QObject *parent)
    : QObject(parent)
    , m_findKey(std::move(findKey))
{
}

void LinuxKeyDownMonitor::install(std::function<bool(const KeyDown &)> handler)
{
    m_handler = std::move(handler);
    watch();
}

void LinuxKeyDownMonitor::remove()
{
    m_handler = nullptr;
    watch();
}

bool LinuxKeyDownMonitor::eventFilter(QObject *watched, QEvent *event)
{
    // Qt sends each key to the window first, then the same key to its items.
    if (!watched->isWindowType())
        return false;
    Verdict verdict = Verdict::Passed;
    if (event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress)
        verdict = judgePress(static_cast<const QKeyEvent &>(*event));
    else if (event->type() == QEvent::KeyRelease)
        verdict = judgeRelease(static_cast<const QKeyEvent &>(*event));
    if (verdict == Verdict::Passed)
        return false;
    event->accept(); // or Qt would still look for a shortcut
    return true;
}

LinuxKeyDownMonitor::Verdict LinuxKeyDownMonitor::judgePress(const QKeyEvent &key)
{
    const bool isPress = key.type() == QEvent::KeyPress;
    if (m_judged && m_judged->scanCode == key.nativeScanCode()) {
        if (isPress && std::exchange(m_judged->isPressToCome, false))
            return m_judged->verdict;
        // Its repeats must not reach the window either, when the handler is gone.
        if (key.isAutoRepeat() && m_judged->verdict == Verdict::Swallowed)
            return Verdict::Swallowed;
    }
    if (std::ranges::find(ModifierKeys, key.key()) != std::end(ModifierKeys))
        return Verdict::Passed;
    const Verdict verdict = ask(key);
    m_judged = Judged{key.nativeScanCode(), verdict, !isPress};
    watch();
    return verdict;
}

LinuxKeyDownMonitor::Verdict LinuxKeyDownMonitor::judgeRelease(const QKeyEvent &key)
{
    if (!m_judged || m_judged->scanCode != key.nativeScanCode())
        return Verdict::Passed;
    const Verdict verdict = m_judged->verdict;
    if (!key.isAutoRepeat()) {
        m_judged.reset();
        watch();
    }
    return verdict;
}

LinuxKeyDownMonitor::Verdict LinuxKeyDownMonitor::ask(const QKeyEvent &key) const
{
    const auto handler = m_handler; // a copy, since it may remove itself
    const bool isSwallowed =
        handler && handler({m_findKey(key.nativeScanCode()), flagsOf(key.modifiers())});
    return isSwallowed ? Verdict::Swallowed : Verdict::Passed;
}

/// Watches while there is a handler, and until a swallowed key is up again.
void LinuxKeyDownMonitor::watch()
{
    const bool isKeyDown = m_judged && m_judged->verdict == Verdict::Swallowed;
    const bool isNeeded = m_handler || isKeyDown;
    if (std::exchange(m_isWatching, isNeeded) == isNeeded)
        return;
    if (isNeeded)
        QCoreApplication::instance()->installEventFilter(this);
    else
        QCoreApplication::instance()->removeEventFilter(this);
}
