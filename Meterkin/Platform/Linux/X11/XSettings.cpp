#include "Platform/Linux/X11/XSettings.h"

#include "Platform/Log.h"

#include <QtEndian>

#include <utility>

namespace {

constexpr quint32 MostBytes = 64 * 1024; // daemons publish a few kB

enum RecordType : quint8 { Integer = 0, Text = 1, Color = 2 };

constexpr quint32 ColorSize = 8;

/// Takes values off the front of a block. Beyond its end they are empty or 0.
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

    /// With the padding that follows, up to a multiple of four bytes.
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

std::optional<ThemeSettings> xsettingsValues(QByteArrayView block)
{
    BlockReader reader(block);
    ThemeSettings found;
    reader.number<quint32>(); // the serial
    for (auto left = reader.number<quint32>(); left > 0 && reader.isSound(); --left) {
        const auto type = reader.number<quint8>();
        reader.bytes(1);
        const QByteArrayView key = reader.padded(reader.number<quint16>());
        reader.number<quint32>(); // the serial of its last change
        if (type == Text) {
            const QByteArrayView value = reader.padded(reader.number<quint32>());
            if (key == "Net/ThemeName")
                found.name = QString::fromUtf8(value);
        } else if (type == Integer) {
            const auto value = reader.number<quint32>();
            if (key == "Gtk/EnableAnimations")
                found.isAnimated = value != 0;
        } else if (type == Color) {
            reader.bytes(ColorSize);
        } else {
            return std::nullopt; // its length is not known
        }
    }
    return reader.isSound() ? std::optional(found) : std::nullopt;
}

XSettings::XSettings(X11Connection &connection, QObject *parent)
    : QObject(parent)
    , m_connection(connection)
    // Selected before the first reading, so that no change is missed.
    , m_daemon(connection, "_XSETTINGS", XCB_EVENT_MASK_PROPERTY_CHANGE)
{
    if (!m_connection.isOpen())
        return;
    m_property = m_connection.atom("_XSETTINGS_SETTINGS");
    connect(&m_connection, &X11Connection::eventReceived, this, &XSettings::handleEvent);
    connect(&m_daemon, &X11Selection::ownerChanged, this, &XSettings::read);
    read();
}

void XSettings::handleEvent(const xcb_generic_event_t *event)
{
    if ((event->response_type & 0x7f) != XCB_PROPERTY_NOTIFY)
        return;
    const auto &change = xcbEvent<xcb_property_notify_event_t>(event);
    if (change.window == m_daemon.owner() && change.atom == m_property)
        read();
}

void XSettings::read()
{
    if (m_daemon.owner() == XCB_WINDOW_NONE)
        return;
    const auto reply = m_connection.awaitReply(
        xcb_get_property_reply,
        xcb_get_property(m_connection.xcb(), 0, m_daemon.owner(), m_property, m_property, 0,
                         MostBytes / sizeof(quint32)));
    // A new daemon has published nothing yet: its predecessor's settings stay.
    if (!reply || reply->type == XCB_ATOM_NONE)
        return;
    QByteArrayView block;
    if (reply->format == 8)
        block = {static_cast<const char *>(xcb_get_property_value(reply.get())),
                 xcb_get_property_value_length(reply.get())};
    const std::optional<ThemeSettings> published = xsettingsValues(block);
    if (!published)
        qCWarning(logWindows,
                  "The desktop's XSETTINGS daemon publishes a damaged block: without a "
                  "theme's name, windows are light unless the portal says otherwise");
    const ThemeSettings values = published.value_or(ThemeSettings());
    if (std::exchange(m_values, values) != values)
        emit changed();
}
