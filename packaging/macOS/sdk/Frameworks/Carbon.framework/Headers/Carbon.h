#pragma once

#include <MacTypes.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct OpaqueEventRef *EventRef;
typedef struct OpaqueEventHandlerRef *EventHandlerRef;
typedef struct OpaqueEventHandlerCallRef *EventHandlerCallRef;
typedef struct OpaqueEventTargetRef *EventTargetRef;
typedef struct OpaqueEventHotKeyRef *EventHotKeyRef;

typedef OSStatus (*EventHandlerProcPtr)(EventHandlerCallRef inHandlerCallRef, EventRef inEvent,
                                        void *inUserData);
typedef EventHandlerProcPtr EventHandlerUPP;

typedef struct EventTypeSpec {
    OSType eventClass;
    UInt32 eventKind;
} EventTypeSpec;

typedef struct EventHotKeyID {
    OSType signature;
    UInt32 id;
} EventHotKeyID;

enum { eventNotHandledErr = -9874, eventHotKeyExistsErr = -9878 };
enum { kEventClassKeyboard = 'keyb' };
enum { kEventHotKeyPressed = 5 };

EventTargetRef GetApplicationEventTarget(void);
OSStatus InstallEventHandler(EventTargetRef inTarget, EventHandlerUPP inHandler,
                             ItemCount inNumTypes, const EventTypeSpec *inList, void *inUserData,
                             EventHandlerRef *outRef);
OSStatus RemoveEventHandler(EventHandlerRef inHandlerRef);
OSStatus RegisterEventHotKey(UInt32 inHotKeyCode, UInt32 inHotKeyModifiers,
                             EventHotKeyID inHotKeyID, EventTargetRef inTarget,
                             OptionBits inOptions, EventHotKeyRef *outRef);
OSStatus UnregisterEventHotKey(EventHotKeyRef inHotKey);

#ifdef __cplusplus
}
#endif
