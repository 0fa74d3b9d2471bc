#pragma once

typedef unsigned int UInt32;
typedef signed int SInt32;
typedef SInt32 OSStatus;
typedef UInt32 FourCharCode;
typedef FourCharCode OSType;
typedef unsigned long ItemCount;
typedef UInt32 OptionBits;

enum { noErr = 0 };
