#include "Platform/macOS/NativeView.h"

#include <QWindow>

NSView *viewOf(QWindow &window)
{
    return (__bridge NSView *)reinterpret_cast<void *>(window.winId());
}
