#include "Platform/macOS/Sensors/SMCReader.h"

#include "Platform/macOS/FourCharacterCode.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdio>
#include <string>

namespace {

void describe(std::string_view key, const std::string &type, const RawKey &raw)
{
    std::string line = "[Meterkin] Fan key '";
    line.append(key).append("' type='").append(type);
    line.append("' size=").append(std::to_string(raw.dataSize)).append(" bytes=[");
    for (std::size_t i = 0; i < raw.bytes.size(); ++i)
        line.append(i == 0 ? "" : ", ").append(std::to_string(raw.bytes[i]));
    line.append("]\n");
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fflush(stdout);
}

std::optional<double> decode(const std::string &type, const std::array<std::uint8_t, 4> &bytes)
{
    const auto bigEndian = static_cast<std::uint16_t>(bytes[0] << 8 | bytes[1]);
    if (type == "flt " || type == "flt") {
        const std::uint32_t bits = static_cast<std::uint32_t>(bytes[3]) << 24
            | static_cast<std::uint32_t>(bytes[2]) << 16 | static_cast<std::uint32_t>(bytes[1]) << 8
            | bytes[0];
        const double value = static_cast<double>(std::bit_cast<float>(bits));
        return std::isfinite(value) ? std::optional(value) : std::nullopt;
    }
    if (type == "ui16")
        return bigEndian;
    if (type == "ui8 " || type == "ui8")
        return bytes[0];
    if (type == "sp78")
        return static_cast<std::int16_t>(bigEndian) / 256.0;
    return bigEndian / 4.0; // "fpe2", and the best guess for an unknown type
}

} // namespace

SMCReader::SMCReader(std::unique_ptr<FanControllerConnection> connection)
    : m_connection(std::move(connection))
    , m_isConnected(m_connection->open())
{
}

SMCReader::~SMCReader()
{
    if (m_isConnected)
        m_connection->close();
}

std::optional<RawKey> SMCReader::readRaw(std::string_view key)
{
    if (!m_isConnected)
        return std::nullopt;

    ControllerRecord request;
    ControllerRecord reply;
    request.key = fourCharacterCode(key);
    request.command = ReadKeyInfo;
    if (!m_connection->call(request, reply))
        return std::nullopt;

    RawKey raw;
    raw.dataType = reply.dataType;
    raw.dataSize = reply.dataSize;
    request.dataSize = reply.dataSize;
    request.command = ReadKeyBytes;
    if (!m_connection->call(request, reply))
        return std::nullopt;

    std::copy_n(reply.data.begin(), raw.bytes.size(), raw.bytes.begin());
    return raw;
}

std::optional<double> SMCReader::readValue(std::string_view key)
{
    const std::optional<RawKey> raw = readRaw(key);
    if (!raw)
        return std::nullopt;
    const std::string type = fourCharacterText(raw->dataType);
    if (!loggedFanType)
        describe(key, type, *raw);
    return decode(type, raw->bytes);
}
