#include "Platform/macOS/Windows/WindowStyle.h"

#include "Platform/macOS/Windows/Colors.h"
#include "Platform/macOS/Windows/NativeView.h"

#include <QQuickWindow>

namespace {

constexpr NSWindowStyleMask TitledMask = NSWindowStyleMaskTitled | NSWindowStyleMaskClosable;

/// The native window. Qt derives its style from the flags, so all else has to be set after them.
NSWindow *titledWindow(QQuickWindow &window)
{
    window.setFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint
                    | Qt::WindowCloseButtonHint);
    return viewOf(window.winId()).window;
}

} // namespace

void MacWindowStyle::makeTitled(QQuickWindow &window)
{
    titledWindow(window).styleMask = TitledMask;
}

WindowStyle::TitleBar MacWindowStyle::makeOnboarding(QQuickWindow &window)
{
    NSWindow *native = titledWindow(window);
    native.titlebarAppearsTransparent = YES;
    native.titleVisibility = NSWindowTitleHidden;
    native.styleMask = TitledMask | NSWindowStyleMaskFullSizeContentView;
    native.movableByWindowBackground = YES;
    native.backgroundColor = appKitColor(window.color());
    native.level = NSFloatingWindowLevel;
    return TitleBar::System;
}

void MacWindowStyle::present(QQuickWindow &window)
{
    window.show();
    [NSApp unhideWithoutActivation];
    [viewOf(window.winId()).window makeKeyAndOrderFront:nil];
    [NSApp activateIgnoringOtherApps:YES];
}

void MacWindowStyle::presentUnasked(QQuickWindow &window)
{
    // On a Mac the welcome window comes to the front, too.
    present(window);
}
