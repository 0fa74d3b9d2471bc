#include "Platform/Linux/X11Keyboard.h"

#include <algorithm>

// The header is one of C: it calls a field by a word that C++ keeps for itself.
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit

namespace {

constexpr quint16 Core = XCB_XKB_ID_USE_CORE_KBD;
constexpr quint16 Changes = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY
    | XCB_XKB_EVENT_TYPE_NAMES_NOTIFY;
constexpr quint16 MapParts = XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_MODIFIER_MAP;
constexpr quint32 DetectableRepeat = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;

constexpr int BurstMilliseconds = 50; // a changed layout is told of key by key

constexpr int Modifiers = 8;
constexpr qsizetype WordSize = 4;
constexpr qsizetype NameSize = sizeof(xcb_xkb_key_name_t);

} // namespace

X11Keyboard::X11Keyboard(X11Connection &connection, QObject *parent)
    : QObject(parent)
    , m_connection(connection)
{
    m_changedSoon.setSingleShot(true);
    m_changedSoon.setInterval(BurstMilliseconds);
    connect(&m_changedSoon, &QTimer::timeout, this, &X11Keyboard::changed);
    connect(&m_connection, &X11Connection::eventReceived, this, &X11Keyboard::handleEvent);
    connect(&m_connection, &X11Connection::closed, this, &X11Keyboard::stopWatching);
}

X11KeyNames X11Keyboard::keyNames()
{
    if (!m_connection.isOpen() || !useXkb())
        return {};
    const auto cookie = xcb_xkb_get_names(m_connection.xcb(), Core, XCB_XKB_NAME_DETAIL_KEY_NAMES);
    const XcbReply<xcb_xkb_get_names_reply_t> reply(
        xcb_xkb_get_names_reply(m_connection.xcb(), cookie, nullptr));
    m_connection.dispatchSoon();
    if (!reply || reply->which != XCB_XKB_NAME_DETAIL_KEY_NAMES || reply->length < reply->nKeys)
        return {};
    const auto *packed = static_cast<const char *>(xcb_xkb_get_names_value_list(reply.get()));
    return {reply->firstKey, QByteArray(packed, reply->nKeys * NameSize)};
}

X11ModifierBits X11Keyboard::modifierBits()
{
    if (!m_connection.isOpen())
        return {};
    xcb_connection_t *xcb = m_connection.xcb();
    const xcb_setup_t &setup = *xcb_get_setup(xcb);
    const auto mappingCookie = xcb_get_modifier_mapping(xcb);
    const auto keysymsCookie = xcb_get_keyboard_mapping(
        xcb, setup.min_keycode,
        static_cast<quint8>(std::min(setup.max_keycode - setup.min_keycode + 1, 255)));
    const XcbReply<xcb_get_modifier_mapping_reply_t> mapping(
        xcb_get_modifier_mapping_reply(xcb, mappingCookie, nullptr));
    const XcbReply<xcb_get_keyboard_mapping_reply_t> keysyms(
        xcb_get_keyboard_mapping_reply(xcb, keysymsCookie, nullptr));
    m_connection.dispatchSoon();
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

bool X11Keyboard::isDown(xcb_keycode_t keyCode)
{
    if (!m_connection.isOpen())
        return false;
    const auto cookie = xcb_query_keymap(m_connection.xcb());
    const XcbReply<xcb_query_keymap_reply_t> reply(
        xcb_query_keymap_reply(m_connection.xcb(), cookie, nullptr));
    m_connection.dispatchSoon();
    return reply && (reply->keys[keyCode / 8] >> (keyCode % 8) & 1) != 0;
}

void X11Keyboard::startWatching()
{
    if (!m_connection.isOpen())
        return;
    m_isWatching = true;
    if (useXkb())
        select(Changes);
}

void X11Keyboard::stopWatching()
{
    m_isWatching = false;
    m_changedSoon.stop();
    if (m_connection.isOpen() && m_firstEvent)
        select(0);
}

bool X11Keyboard::useXkb()
{
    if (m_firstEvent)
        return true;
    xcb_connection_t *xcb = m_connection.xcb();
    const xcb_query_extension_reply_t *extension = xcb_get_extension_data(xcb, &xcb_xkb_id);
    if (extension == nullptr || extension->present == 0)
        return false;
    const auto useCookie = xcb_xkb_use_extension(xcb, XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION);
    const auto flagsCookie =
        xcb_xkb_per_client_flags(xcb, Core, DetectableRepeat, DetectableRepeat, 0, 0, 0);
    const XcbReply<xcb_xkb_use_extension_reply_t> use(
        xcb_xkb_use_extension_reply(xcb, useCookie, nullptr));
    const XcbReply<xcb_xkb_per_client_flags_reply_t> flags(
        xcb_xkb_per_client_flags_reply(xcb, flagsCookie, nullptr));
    m_connection.dispatchSoon();
    if (!use || use->supported == 0)
        return false;
    m_firstEvent = extension->first_event;
    m_hasDetectableRepeat = flags && (flags->value & DetectableRepeat) != 0;
    return true;
}

void X11Keyboard::select(quint16 events)
{
    xcb_xkb_select_events(m_connection.xcb(), Core, Changes,
                          static_cast<quint16>(Changes & ~events),
                          static_cast<quint16>(events & ~XCB_XKB_EVENT_TYPE_MAP_NOTIFY), MapParts,
                          events != 0 ? MapParts : quint16{0}, nullptr);
    xcb_flush(m_connection.xcb());
}

void X11Keyboard::handleEvent(const xcb_generic_event_t *event)
{
    const int type = event->response_type & 0x7f;
    if (m_isWatching && !m_changedSoon.isActive()
        && (type == XCB_MAPPING_NOTIFY || (m_firstEvent && type == *m_firstEvent)))
        m_changedSoon.start();
}
