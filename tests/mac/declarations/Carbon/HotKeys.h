// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <MacTypes.h>

// The part of the Carbon event manager that hot keys take.

typedef struct OpaqueEventRef *EventRef;
typedef struct OpaqueEventTargetRef *EventTargetRef;
typedef struct OpaqueEventHandlerRef *EventHandlerRef;
typedef struct OpaqueEventHandlerCallRef *EventHandlerCallRef;
typedef struct OpaqueEventHotKeyRef *EventHotKeyRef;
typedef OSType EventParamName;
typedef OSType EventParamType;

typedef OSStatus (*EventHandlerProcPtr)(EventHandlerCallRef call, EventRef event, void *userData);
typedef EventHandlerProcPtr EventHandlerUPP;

struct EventTypeSpec
{
    OSType eventClass;
    UInt32 eventKind;
};
typedef struct EventTypeSpec EventTypeSpec;

struct EventHotKeyID
{
    OSType signature;
    UInt32 id;
};
typedef struct EventHotKeyID EventHotKeyID;

enum { eventNotHandledErr = -9874 };
enum { eventHotKeyExistsErr = -9878 };
enum { kEventHotKeyNoOptions = 0, kEventHotKeyExclusive = 1 << 0 };
enum { kEventClassKeyboard = 0x6b657962 }; // "keyb"
enum { kEventHotKeyPressed = 5 };
enum { kEventParamDirectObject = 0x2d2d2d2d }; // "----"
enum { typeEventHotKeyID = 0x686b6964 };       // "hkid"

extern "C" {
EventTargetRef GetApplicationEventTarget(void);
OSStatus InstallEventHandler(EventTargetRef target, EventHandlerUPP handler, ItemCount typeCount,
                             const EventTypeSpec *types, void *userData, EventHandlerRef *installed);
OSStatus RemoveEventHandler(EventHandlerRef handler);
OSStatus GetEventParameter(EventRef event, EventParamName name, EventParamType desiredType,
                           EventParamType *actualType, ByteCount size, ByteCount *actualSize, void *data);
OSStatus RegisterEventHotKey(UInt32 keyCode, UInt32 modifiers, EventHotKeyID identifier,
                             EventTargetRef target, OptionBits options, EventHotKeyRef *hotKey);
OSStatus UnregisterEventHotKey(EventHotKeyRef hotKey);
}
