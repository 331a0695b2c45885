// Numbers and booleans.
#pragma once

#include "platform/foundation/CFBase.h"

enum CFNumberType : CFIndex {
    kCFNumberSInt16Type = 2,
    kCFNumberSInt32Type = 3,
    kCFNumberSInt64Type = 4,
    kCFNumberFloat32Type = 5,
    kCFNumberFloat64Type = 6,
    kCFNumberDoubleType = 13,
    kCFNumberCFIndexType = 14,
};

CFTypeID CFNumberGetTypeID();

/// A new number from the value that `value` points at, which has the C type that `type` names.
CFNumberRef CFNumberCreate(CFAllocatorRef allocator, CFNumberType type, const void* value);

/// Writes the number into the variable of the C type that `type` names. False, and nothing written, when the
/// number does not fit or has a fraction that an integer type would lose. Every number reads as a real type, rounded
/// to it; only one beyond the range of Float32 does not fit there.
Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value);

CFTypeID CFBooleanGetTypeID();

/// The only two booleans; never released.
extern const CFBooleanRef kCFBooleanTrue;
extern const CFBooleanRef kCFBooleanFalse;

/// False for null.
Boolean CFBooleanGetValue(CFBooleanRef boolean);
