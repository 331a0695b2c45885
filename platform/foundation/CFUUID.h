// Universally unique identifiers.
#pragma once

#include "platform/foundation/CFBase.h"

struct CFUUIDBytes {
    UInt8 bytes[16];
};

/// A new identifier from its canonical text ("BDB091F4-E57F-11D3-B5CC-0050E4603277"); null when it is not one.
CFUUIDRef CFUUIDCreateFromString(CFAllocatorRef allocator, CFStringRef text);
CFUUIDRef CFUUIDCreateFromUUIDBytes(CFAllocatorRef allocator, CFUUIDBytes bytes);
/// The constant identifier of these bytes: one object for the process, never released.
CFUUIDRef CFUUIDGetConstantUUIDWithBytes(CFAllocatorRef allocator, UInt8 byte0, UInt8 byte1, UInt8 byte2, UInt8 byte3,
                                         UInt8 byte4, UInt8 byte5, UInt8 byte6, UInt8 byte7, UInt8 byte8, UInt8 byte9,
                                         UInt8 byte10, UInt8 byte11, UInt8 byte12, UInt8 byte13, UInt8 byte14,
                                         UInt8 byte15);
CFUUIDBytes CFUUIDGetUUIDBytes(CFUUIDRef uuid);
