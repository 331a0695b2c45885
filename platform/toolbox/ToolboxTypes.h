// Types that all toolbox headers share. Any reference may be null: the call then answers with an error or a zero.
#pragma once

#include "platform/foundation/CFBase.h"

using ControlRef = struct OpaqueControlRef*;
using WindowRef = struct OpaqueWindowRef*;
using MenuRef = struct OpaqueMenuRef*;
using CGContextRef = struct OpaqueCGContextRef*;  // lives during one draw event
using MenuItemIndex = UInt16;
using ControlPartCode = SInt16;

/// A rectangle in whole points, in a window's coordinates: origin at the top left of its content.
struct Rect {
    SInt16 top;
    SInt16 left;
    SInt16 bottom;
    SInt16 right;
};

/// A rectangle or point in points, in a view's own coordinates: origin at its top left, y downwards.
struct HIPoint {
    double x;
    double y;
};
struct HISize {
    double width;
    double height;
};
struct HIRect {
    HIPoint origin;
    HISize size;
};

inline constexpr OSStatus controlHandleInvalidErr = -30599;
inline constexpr OSStatus errUnknownControl = -30584;
inline constexpr OSStatus errDataNotSupported = -30581;
inline constexpr OSStatus controlPropertyNotFoundErr = -5604;
inline constexpr OSStatus errInvalidWindowRef = -5600;
inline constexpr OSStatus menuItemNotFoundErr = -5622;
