#include "Platform/Linux/Tray/PanelColors.h"

QColor panelColor(SystemColor color)
{
    switch (color) {
    case SystemColor::Green:
        return QColor(0x1f, 0x99, 0x3d);
    case SystemColor::Yellow:
        return QColor(0xb0, 0x80, 0x00);
    case SystemColor::Red:
        return QColor(0xe5, 0x48, 0x4d);
    }
    Q_UNREACHABLE();
}
