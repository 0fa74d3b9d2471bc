#include "Platform/macOS/NativeView.h"

#import "Fakes/FakeViews.h"

#include "Fakes/CallLog.h"

#include <QVariant>
#include <QWindow>

NSView *viewOf(QWindow &window)
{
    static constexpr char key[] = "fakeView";
    // Closing destroys what is native of a window.
    if (window.handle() == nullptr || !window.property(key).isValid()) {
        CallLog::note(QStringLiteral("created with flags %1").arg(int(window.flags()), 0, 16));
        window.create();
        NSView *view = [[NSView alloc] initWithFrame:NSMakeRect(70, 90, 1, 1)];
        placeInWindow(view, QStringLiteral("window"));
        window.setProperty(key, QVariant::fromValue(static_cast<void *>(view)));
    }
    return static_cast<NSView *>(window.property(key).value<void *>());
}
