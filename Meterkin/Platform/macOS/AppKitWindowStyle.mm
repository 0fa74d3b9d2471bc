#include "Platform/macOS/AppKitWindowStyle.h"

#include "Platform/macOS/AppKitColors.h"
#include "Platform/macOS/NativeView.h"

#include <QQuickWindow>

namespace {

constexpr NSWindowStyleMask TitledMask = NSWindowStyleMaskTitled | NSWindowStyleMaskClosable;

/// The native window, made from flags that say what flags can: the rest has to come after them.
NSWindow *titledWindow(QQuickWindow &window)
{
    window.setFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint
                    | Qt::WindowCloseButtonHint);
    return viewOf(window).window;
}

} // namespace

void AppKitWindowStyle::makeTitled(QQuickWindow &window)
{
    titledWindow(window).styleMask = TitledMask;
}

WindowStyle::TitleBar AppKitWindowStyle::makeOnboarding(QQuickWindow &window)
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

void AppKitWindowStyle::present(QQuickWindow &window)
{
    window.show();
    [NSApp unhideWithoutActivation];
    [viewOf(window).window makeKeyAndOrderFront:nil];
    [NSApp activateIgnoringOtherApps:YES];
}

void AppKitWindowStyle::presentUnasked(QQuickWindow &window)
{
    // Here the welcome comes to the front as well.
    present(window);
}
