#include "Platform/Linux/Hotkey/X11/KeyNames.h"

#include "Platform/Linux/Hotkey/KeyPositions.h"

namespace {

constexpr qsizetype NameSize = X11KeyNames::NameSize;

std::string_view nameAt(const QByteArray &packed, qsizetype index)
{
    if (index < 0 || index >= packed.size() / NameSize)
        return {};
    const std::string_view name(packed.constData() + index * NameSize, NameSize);
    return name.substr(0, name.find('\0'));
}

} // namespace

std::optional<std::uint32_t> X11KeyNames::keyCode(std::uint32_t virtualKeyCode) const
{
    if (packed.isEmpty())
        return hardwareCode(virtualKeyCode);
    const std::string_view name = positionName(virtualKeyCode);
    if (name.empty())
        return std::nullopt;
    for (qsizetype index = 0; index < packed.size() / NameSize; ++index) {
        if (nameAt(packed, index) == name)
            return firstKeyCode + static_cast<std::uint32_t>(index);
    }
    return std::nullopt;
}

std::uint32_t X11KeyNames::virtualKeyCode(std::uint32_t keyCode) const
{
    if (packed.isEmpty())
        return ::virtualKeyCode(keyCode);
    return virtualKeyCodeNamed(nameAt(packed, qsizetype{keyCode} - qsizetype{firstKeyCode}));
}
