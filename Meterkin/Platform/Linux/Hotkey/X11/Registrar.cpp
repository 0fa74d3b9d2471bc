#include "Platform/Linux/Hotkey/X11/Registrar.h"

#include "Platform/Log.h"

#include <chrono>
#include <utility>

namespace {

constexpr quint16 AllModifiers = 0xff; // the bits above are buttons and the keyboard group

// Longer than the delay before a held key repeats.
constexpr int RepeatMilliseconds = 1000;

constexpr std::chrono::seconds FirstRetry{5};
constexpr std::chrono::minutes LongestRetry{1};

} // namespace

X11Registrar::X11Registrar(X11Connection &connection, X11KeyboardLayout &keyboard, QObject *parent)
    : QObject(parent)
    , m_connection(connection)
    , m_keyboard(keyboard)
    , m_retry(FirstRetry, LongestRetry)
{
    m_retry.setTimerType(Qt::VeryCoarseTimer);
    connect(&m_retry, &QTimer::timeout, this, &X11Registrar::tryNow);
    connect(&m_connection, &X11Connection::eventReceived, this, &X11Registrar::handleEvent);
    connect(&m_connection, &X11Connection::closed, this, &X11Registrar::forget);
    connect(&m_keyboard, &X11KeyboardLayout::changed, this, &X11Registrar::follow);
}

void X11Registrar::bind(const HotkeyCombination &combination, std::function<void()> pressed)
{
    unbind();
    m_pressed = std::move(pressed);
    m_combination = combination;
    follow();
}

void X11Registrar::unbind()
{
    m_retry.stop();
    release();
    m_combination.reset();
    m_pressed = nullptr;
    setObstacle(HotkeyObstacle::None);
}

std::optional<X11Registrar::Grab> X11Registrar::findGrab(const HotkeyCombination &combination)
{
    const auto key = m_keyboard.keyNames().keyCode(combination.keyCode);
    const X11ModifierBits bits = m_keyboard.modifierBits();
    const auto modifiers = bits.mask(combination.modifiers);
    if (!key || !modifiers)
        return std::nullopt;
    return Grab{static_cast<xcb_keycode_t>(*key), *modifiers,
                static_cast<quint16>(bits.locks & ~*modifiers)};
}

bool X11Registrar::take(const Grab &grab)
{
    xcb_connection_t *xcb = m_connection.xcb();
    QList<xcb_void_cookie_t> cookies;
    for (const quint16 locks : lockCombinations(grab.locks)) {
        cookies.append(xcb_grab_key_checked(xcb, 0, m_connection.screen().root,
                                            static_cast<quint16>(grab.modifiers | locks), grab.key,
                                            XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    }
    bool isGranted = true;
    for (const xcb_void_cookie_t cookie : cookies)
        isGranted = m_connection.isAccepted(cookie) && isGranted;
    m_grab = grab;
    if (!isGranted)
        release();
    m_heldKey = 0;
    // A combination that was just recorded is still down. Its release goes to another window.
    m_mayRepeat.setRemainingTime(m_keyboard.isDown(grab.key) ? RepeatMilliseconds : 0);
    return isGranted;
}

/// Also of a grab that the server has granted in part.
void X11Registrar::release()
{
    const std::optional<Grab> grab = std::exchange(m_grab, std::nullopt);
    if (!grab || !m_connection.isOpen())
        return;
    for (const quint16 locks : lockCombinations(grab->locks)) {
        xcb_ungrab_key(m_connection.xcb(), grab->key, m_connection.screen().root,
                       static_cast<quint16>(grab->modifiers | locks));
    }
    xcb_flush(m_connection.xcb());
}

void X11Registrar::follow()
{
    m_retry.reset();
    tryNow();
}

/// Moves the grab to the codes that key and modifiers have now.
void X11Registrar::tryNow()
{
    m_retry.stop();
    if (!m_combination)
        return;
    if (!m_connection.isOpen()) {
        report(HotkeyObstacle::NoService, "there is no X server");
        return;
    }
    const std::optional<Grab> grab = findGrab(*m_combination);
    if (grab && grab == m_grab)
        return;
    release();
    if (!grab) {
        report(HotkeyObstacle::MissingKey,
               "the keyboard lacks the key or a modifier; it is bound when "
               "another layout has them");
    } else if (take(*grab)) {
        setObstacle(HotkeyObstacle::None);
    } else {
        report(HotkeyObstacle::OtherProgram,
               "another program has grabbed it; retried at least once a minute");
        m_retry.retry();
    }
}

/// Retries that fail for the same reason say nothing more.
void X11Registrar::report(HotkeyObstacle obstacle, const char *reason)
{
    if (this->obstacle() != obstacle)
        qCWarning(logHotkey, "The hot key %s is not bound: %s",
                  qPrintable(m_keyboard.text(*m_combination)), reason);
    setObstacle(obstacle);
}

void X11Registrar::forget()
{
    m_grab.reset();
    tryNow();
}

void X11Registrar::handleEvent(const xcb_generic_event_t *event)
{
    // Another program's SendEvent would set the highest bit: no key was pressed then.
    if (event->response_type == XCB_KEY_PRESS) {
        handlePress(xcbEvent<xcb_key_press_event_t>(event));
    } else if (event->response_type == XCB_KEY_RELEASE) {
        const auto &release = xcbEvent<xcb_key_release_event_t>(event);
        if (release.detail == m_heldKey) {
            m_heldKey = 0;
            m_mayRepeat.setRemainingTime(0);
            m_releasedAt = release.time;
        }
    }
}

void X11Registrar::handlePress(const xcb_key_press_event_t &press)
{
    if (!m_grab || press.detail != m_grab->key
        || (press.state & AllModifiers & ~m_grab->locks) != m_grab->modifiers)
        return;
    const bool isRepeat = m_heldKey == press.detail || !m_mayRepeat.hasExpired()
        || (!m_keyboard.hasDetectableRepeat() && press.time == m_releasedAt);
    m_heldKey = press.detail;
    if (isRepeat)
        return;
    if (const auto pressed = m_pressed) // a copy, since it may bind another one
        pressed();
}
