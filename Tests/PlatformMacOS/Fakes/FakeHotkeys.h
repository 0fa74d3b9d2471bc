#pragma once

#include <Carbon/Carbon.h>

/// The event manager, with what is installed at the moment.
struct FakeHotkeys {
    OSStatus installStatus = noErr;
    OSStatus registerStatus = noErr;
    int handlers = 0;
    int hotkeys = 0;
    EventHandlerUPP handler = nullptr; ///< the newest
    void *userData = nullptr;

    /// The key is pressed.
    OSStatus press() const { return handler(nullptr, nullptr, userData); }

    static FakeHotkeys &manager();
};
