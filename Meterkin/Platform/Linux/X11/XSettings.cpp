#include "Platform/Linux/X11/XSettings.h"

#include <QtEndian>

#include <utility>

namespace {

constexpr quint32 MostBytes = 64 * 1024; // daemons publish a few kB

enum RecordType : quint8 { Integer = 0, Text = 1, Color = 2 };

constexpr quint32 ColorSize = 8;

/// Takes values off the front of a block; what is not there reads as empty or 0.
class BlockReader {
public:
    explicit BlockReader(QByteArrayView block)
        : m_rest(block)
    {
        const auto order = number<quint8>();
        m_isBigEndian = order == 1;
        m_isSound = m_isSound && order <= 1;
        bytes(3);
    }

    bool isSound() const { return m_isSound; }

    QByteArrayView bytes(quint32 count)
    {
        if (count > static_cast<std::size_t>(m_rest.size())) {
            m_isSound = false;
            m_rest = {};
            return {};
        }
        const QByteArrayView taken = m_rest.first(count);
        m_rest = m_rest.sliced(count);
        return taken;
    }

    /// Together with what fills up the last four bytes.
    QByteArrayView padded(quint32 count)
    {
        const QByteArrayView taken = bytes(count);
        bytes((4 - count % 4) % 4);
        return taken;
    }

    template <typename Number> Number number()
    {
        const QByteArrayView raw = bytes(sizeof(Number));
        if (raw.isEmpty())
            return 0;
        return m_isBigEndian ? qFromBigEndian<Number>(raw.data())
                             : qFromLittleEndian<Number>(raw.data());
    }

private:
    QByteArrayView m_rest;
    bool m_isBigEndian = false;
    bool m_isSound = true;
};

} // namespace

std::optional<XSettingsValues> xsettingsValues(QByteArrayView block)
{
    BlockReader reader(block);
    XSettingsValues found;
    reader.number<quint32>(); // the serial
    for (auto left = reader.number<quint32>(); left > 0 && reader.isSound(); --left) {
        const auto type = reader.number<quint8>();
        reader.bytes(1);
        const QByteArrayView key = reader.padded(reader.number<quint16>());
        reader.number<quint32>(); // the serial of its last change
        if (type == Text) {
            const QByteArrayView value = reader.padded(reader.number<quint32>());
            if (key == "Net/ThemeName")
                found.themeName = QString::fromUtf8(value);
        } else if (type == Integer) {
            const auto value = reader.number<quint32>();
            if (key == "Gtk/EnableAnimations")
                found.isAnimated = value != 0;
        } else if (type == Color) {
            reader.bytes(ColorSize);
        } else {
            return std::nullopt; // of unknown length
        }
    }
    return reader.isSound() ? std::optional(found) : std::nullopt;
}

XSettings::XSettings(X11Connection &connection, QObject *parent)
    : QObject(parent)
    , m_connection(connection)
{
    if (!m_connection.isOpen())
        return;
    connect(&m_connection, &X11Connection::eventReceived, this, &XSettings::handleEvent);
    m_selection =
        m_connection.atom("_XSETTINGS_S" + QByteArray::number(m_connection.screenNumber()));
    m_property = m_connection.atom("_XSETTINGS_SETTINGS");
    // A new daemon announces itself on the root window, where others who share the connection may
    // have selected events before.
    xcb_connection_t *xcb = m_connection.xcb();
    const xcb_window_t root = m_connection.screen().root;
    const XcbReply<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(xcb, xcb_get_window_attributes(xcb, root), nullptr));
    const quint32 mask =
        (attributes ? attributes->your_event_mask : 0U) | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(xcb, root, XCB_CW_EVENT_MASK, &mask);
    find();
}

void XSettings::handleEvent(const xcb_generic_event_t *event)
{
    const int type = event->response_type & 0x7f;
    if (type == XCB_CLIENT_MESSAGE) {
        const auto &message = xcbEvent<xcb_client_message_event_t>(event);
        if (message.type == m_connection.atom("MANAGER") && message.data.data32[1] == m_selection)
            find();
    } else if (type == XCB_DESTROY_NOTIFY) {
        if (xcbEvent<xcb_destroy_notify_event_t>(event).window == m_owner)
            find();
    } else if (type == XCB_PROPERTY_NOTIFY) {
        const auto &change = xcbEvent<xcb_property_notify_event_t>(event);
        if (change.window == m_owner && change.atom == m_property)
            read();
    }
}

void XSettings::find()
{
    xcb_connection_t *xcb = m_connection.xcb();
    const XcbReply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(xcb, xcb_get_selection_owner(xcb, m_selection), nullptr));
    m_connection.dispatchSoon();
    m_owner = reply ? reply->owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
    if (m_owner == XCB_WINDOW_NONE)
        return;
    // Before reading, so that no change is missed. Nobody hears whether it fails: an owner that has
    // died since it was named has nothing to read either, and its successor announces itself.
    constexpr quint32 mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(xcb, m_owner, XCB_CW_EVENT_MASK, &mask);
    read();
}

void XSettings::read()
{
    const auto cookie = xcb_get_property(m_connection.xcb(), 0, m_owner, m_property, m_property, 0,
                                         MostBytes / sizeof(quint32));
    const XcbReply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(m_connection.xcb(), cookie, nullptr));
    m_connection.dispatchSoon();
    // A daemon that has not spoken yet does not take back what its predecessor said.
    if (!reply || reply->type == XCB_ATOM_NONE)
        return;
    QByteArrayView block;
    if (reply->format == 8)
        block = {static_cast<const char *>(xcb_get_property_value(reply.get())),
                 xcb_get_property_value_length(reply.get())};
    const XSettingsValues values = xsettingsValues(block).value_or(XSettingsValues());
    if (std::exchange(m_values, values) != values)
        emit changed();
}
