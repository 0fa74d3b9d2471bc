#include "Platform/Linux/Hotkey/X11/KeyboardLayout.h"

#include "Platform/Log.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>

// A field in this C header is named "explicit", a keyword of C++.
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit

namespace {

constexpr quint16 Core = XCB_XKB_ID_USE_CORE_KBD;
constexpr quint16 Changes = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY
    | XCB_XKB_EVENT_TYPE_NAMES_NOTIFY;
constexpr quint16 MapParts = XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_MODIFIER_MAP;
constexpr quint32 DetectableRepeat = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;

constexpr int BurstMilliseconds = 50; // a changed layout is reported key by key

constexpr int Modifiers = 8;
constexpr qsizetype WordSize = 4;
static_assert(X11KeyNames::NameSize == sizeof(xcb_xkb_key_name_t));

} // namespace

X11KeyboardLayout::X11KeyboardLayout(X11Connection &connection, QObject *parent)
    : LinuxKeyboardLayout(parent)
    , m_connection(connection)
{
    m_changedSoon.setSingleShot(true);
    m_changedSoon.setInterval(BurstMilliseconds);
    connect(&m_changedSoon, &QTimer::timeout, this, [this] {
        handleChange();
        emit changed();
    });
    connect(&m_connection, &X11Connection::eventReceived, this, &X11KeyboardLayout::handleEvent);
    connect(&m_connection, &X11Connection::closed, &m_changedSoon, &QTimer::stop);
}

X11KeyNames X11KeyboardLayout::keyNames()
{
    if (!m_connection.isOpen() || !useXkb())
        return {};
    const auto reply = m_connection.awaitReply(
        xcb_xkb_get_names_reply,
        xcb_xkb_get_names(m_connection.xcb(), Core, XCB_XKB_NAME_DETAIL_KEY_NAMES));
    if (!reply || reply->which != XCB_XKB_NAME_DETAIL_KEY_NAMES || reply->length < reply->nKeys)
        return {};
    const auto *packed = static_cast<const char *>(xcb_xkb_get_names_value_list(reply.get()));
    return {reply->firstKey, QByteArray(packed, reply->nKeys * X11KeyNames::NameSize)};
}

X11ModifierBits X11KeyboardLayout::modifierBits()
{
    if (!m_connection.isOpen())
        return {};
    xcb_connection_t *xcb = m_connection.xcb();
    const xcb_setup_t &setup = *xcb_get_setup(xcb);
    const auto mappingCookie = xcb_get_modifier_mapping(xcb);
    const auto keysymsCookie = xcb_get_keyboard_mapping(
        xcb, setup.min_keycode,
        static_cast<quint8>(std::min(setup.max_keycode - setup.min_keycode + 1, 255)));
    const auto mapping = m_connection.awaitReply(xcb_get_modifier_mapping_reply, mappingCookie);
    const auto keysyms = m_connection.awaitReply(xcb_get_keyboard_mapping_reply, keysymsCookie);
    if (!mapping || !keysyms
        || mapping->length * WordSize < Modifiers * mapping->keycodes_per_modifier)
        return {};

    QList<X11ModifierKey> keys;
    const xcb_keycode_t *keyCodes = xcb_get_modifier_mapping_keycodes(mapping.get());
    const xcb_keysym_t *table = xcb_get_keyboard_mapping_keysyms(keysyms.get());
    const int columns = keysyms->keysyms_per_keycode;
    for (int index = 0; index < Modifiers * mapping->keycodes_per_modifier; ++index) {
        const int row = keyCodes[index] - setup.min_keycode; // unused places hold code 0
        if (row < 0 || qsizetype{row + 1} * columns > qsizetype{keysyms->length})
            continue;
        for (int column = 0; column < columns; ++column)
            keys.append({index / mapping->keycodes_per_modifier, table[row * columns + column]});
    }
    return x11ModifierBits(keys);
}

bool X11KeyboardLayout::isDown(xcb_keycode_t keyCode)
{
    if (!m_connection.isOpen())
        return false;
    const auto reply =
        m_connection.awaitReply(xcb_query_keymap_reply, xcb_query_keymap(m_connection.xcb()));
    return reply && (reply->keys[keyCode / 8] >> (keyCode % 8) & 1) != 0;
}

std::uint32_t X11KeyboardLayout::virtualKeyCode(std::uint32_t hardwareCode)
{
    return keyNames().virtualKeyCode(hardwareCode);
}

std::uint32_t X11KeyboardLayout::keysym(std::uint32_t virtualKeyCode)
{
    const std::uint32_t ansi = LinuxKeyboardLayout::keysym(virtualKeyCode);
    // Layouts move only letters, digits and signs.
    if (ansi <= XKB_KEY_space || ansi > XKB_KEY_asciitilde)
        return ansi;
    const std::optional<std::uint32_t> keyCode = keyNames().keyCode(virtualKeyCode);
    if (!keyCode || !m_firstEvent || !m_connection.isOpen())
        return ansi;
    const std::uint32_t present = presentKeysym(*keyCode);
    return present != XKB_KEY_NoSymbol ? present : ansi;
}

/// The first symbol of the key in the active layout; XKB_KEY_NoSymbol when there is none.
std::uint32_t X11KeyboardLayout::presentKeysym(std::uint32_t keyCode)
{
    xcb_connection_t *xcb = m_connection.xcb();
    const auto stateCookie = xcb_xkb_get_state(xcb, Core);
    const auto mapCookie =
        xcb_xkb_get_map(xcb, Core, 0, XCB_XKB_MAP_PART_KEY_SYMS, 0, 0,
                        static_cast<xcb_keycode_t>(keyCode), 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
    const auto state = m_connection.awaitReply(xcb_xkb_get_state_reply, stateCookie);
    const auto reply = m_connection.awaitReply(xcb_xkb_get_map_reply, mapCookie);
    constexpr std::size_t Fixed = sizeof(xcb_xkb_get_map_reply_t) + sizeof(xcb_xkb_key_sym_map_t);
    const std::size_t size = reply ? 32 + std::size_t{reply->length} * WordSize : 0;
    if (!state || size < Fixed || reply->present != XCB_XKB_MAP_PART_KEY_SYMS)
        return XKB_KEY_NoSymbol;
    const auto *map = static_cast<const xcb_xkb_key_sym_map_t *>(xcb_xkb_get_map_map(reply.get()));
    const unsigned layouts = map->groupInfo & 0xfU;
    if (layouts == 0 || size < Fixed + std::size_t{map->nSyms} * WordSize)
        return XKB_KEY_NoSymbol;
    const unsigned first = state->group % layouts * map->width;
    return first < map->nSyms ? xcb_xkb_key_sym_map_syms(map)[first] : quint32{XKB_KEY_NoSymbol};
}

bool X11KeyboardLayout::useXkb()
{
    if (m_firstEvent)
        return true;
    xcb_connection_t *xcb = m_connection.xcb();
    const xcb_query_extension_reply_t *extension = xcb_get_extension_data(xcb, &xcb_xkb_id);
    if (extension == nullptr || extension->present == 0) {
        qCDebug(logHotkey, "The X server lacks XKB: keys are taken for those of evdev");
        return false;
    }
    const auto useCookie = xcb_xkb_use_extension(xcb, XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION);
    const auto flagsCookie =
        xcb_xkb_per_client_flags(xcb, Core, DetectableRepeat, DetectableRepeat, 0, 0, 0);
    const auto use = m_connection.awaitReply(xcb_xkb_use_extension_reply, useCookie);
    const auto flags = m_connection.awaitReply(xcb_xkb_per_client_flags_reply, flagsCookie);
    if (!use || use->supported == 0)
        return false;
    m_firstEvent = extension->first_event;
    m_hasDetectableRepeat = flags && (flags->value & DetectableRepeat) != 0;
    watch();
    return true;
}

void X11KeyboardLayout::watch()
{
    // Of the state only the layout: modifiers change with every capital letter.
    xcb_xkb_select_events_details_t details{};
    details.affectState = XCB_XKB_STATE_PART_GROUP_STATE;
    details.stateDetails = XCB_XKB_STATE_PART_GROUP_STATE;
    xcb_xkb_select_events_aux(m_connection.xcb(), Core, Changes | XCB_XKB_EVENT_TYPE_STATE_NOTIFY,
                              0, Changes & ~XCB_XKB_EVENT_TYPE_MAP_NOTIFY, MapParts, MapParts,
                              &details);
    xcb_flush(m_connection.xcb());
}

void X11KeyboardLayout::handleEvent(const xcb_generic_event_t *event)
{
    const int type = event->response_type & 0x7f;
    if (!m_changedSoon.isActive()
        && (type == XCB_MAPPING_NOTIFY || (m_firstEvent && type == *m_firstEvent)))
        m_changedSoon.start();
}
