#pragma once

#include "Platform/KeyboardLayout.h"
#include "Platform/Linux/Hotkey/KeyPositions.h"

#include <QObject>

/// The keyboard where no X server tells of it: key codes are those of evdev, and the layout is
/// taken for the American one. Main thread only.
class LinuxKeyboardLayout : public QObject, public KeyboardLayout {
    Q_OBJECT

public:
    using QObject::QObject;

    /// The virtual key code of the key with that hardware code, as Qt reports it;
    /// KeyDown::NoKeyCode when there is none.
    virtual std::uint32_t virtualKeyCode(std::uint32_t hardwareCode);
    /// The symbol that the key with that virtual key code has without modifiers; 0 for none.
    virtual std::uint32_t keysym(std::uint32_t virtualKeyCode);

private:
    QString write(const HotkeyCombination &combination) override;
};
