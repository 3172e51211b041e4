// SPDX-License-Identifier: Apache-2.0
#pragma once

// The elementary types of the C interfaces.
#include <stdint.h>
#include <sys/types.h>

typedef unsigned char Boolean;
typedef uint8_t UInt8;
typedef int8_t SInt8;
typedef uint16_t UInt16;
typedef int16_t SInt16;
typedef uint32_t UInt32;
typedef int32_t SInt32;
typedef uint64_t UInt64;
typedef int64_t SInt64;
typedef UInt32 FourCharCode;
typedef FourCharCode OSType;
typedef SInt16 OSErr;
typedef SInt32 OSStatus;
typedef UInt32 OptionBits;
typedef unsigned long ByteCount;
typedef unsigned long ItemCount;
typedef UInt16 UniChar;
typedef unsigned long UniCharCount;

enum { noErr = 0 };
