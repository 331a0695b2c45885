// Custom views, pictures, tracking of the mouse, cursors.
#pragma once

#include "platform/foundation/CFString.h"
#include "platform/toolbox/Events.h"

// ---- Custom view classes, named by a nib's "viewClass" or given to HIViewCreate

using HIObjectClassRef = struct OpaqueHIObjectClassRef*;
inline constexpr OSStatus hiObjectClassExistsErr = -22080;
#define kHIViewClassID CFSTR("com.apple.hiview")

/// Registers a class of views. Each view of it gets kEventHIObjectConstruct (direct object: the control,
/// typeControlRef; the handler sets kEventParamHIObjectInstance to its own record, which is the user data of all later
/// events), kEventHIObjectInitialize, hit tests, draws and kEventHIObjectDestruct. A hit test answers with a part code
/// other than 0 in kEventParamControlPart where a click shall count as a hit. hiObjectClassExistsErr for a name that is
/// taken.
OSStatus HIObjectRegisterSubclass(CFStringRef classID, CFStringRef baseClassID, UInt32 options, EventHandlerUPP handler,
                                  ItemCount count, const EventTypeSpec* list, void* constructData,
                                  HIObjectClassRef* ref);

// ---- Pictures

using CGImageRef = struct OpaqueCGImageRef*;
/// A new picture from a file; "name@2x.type" beside it is used on dense screens. Null when it cannot be read.
CGImageRef CGImageCreateWithURL(CFURLRef url);
/// A new picture of pixels, which are copied: rows from the top, each pixel 0xAARRGGBB with its colors multiplied by
/// its alpha. A pixel counts as a point. Null without pixels. The platform's call takes a provider of bytes and what
/// they mean.
CGImageRef CGImageCreate(ByteCount width, ByteCount height, const UInt32* pixels);
void CGImageRelease(CGImageRef image);
/// Natural size in points.
ByteCount CGImageGetWidth(CGImageRef image);
ByteCount CGImageGetHeight(CGImageRef image);
/// Draws the picture into a rectangle of the view that is being drawn.
OSStatus HIViewDrawCGImage(CGContextRef context, const HIRect* bounds, CGImageRef image);

// Plain shapes. Each component of a color is from 0 to 1. The colors of a context are black at first.
void CGContextSetRGBFillColor(CGContextRef context, double red, double green, double blue, double alpha);
void CGContextSetRGBStrokeColor(CGContextRef context, double red, double green, double blue, double alpha);
void CGContextFillRect(CGContextRef context, HIRect rect);
/// A line of one point around the rectangle, on its inside.
void CGContextStrokeRect(CGContextRef context, HIRect rect);

/// The context of the draw event that the control is answering now; null when it is not being drawn.
CGContextRef HIViewGetDrawContext(ControlRef control);
/// Fills the rectangle with the window's background.
void HIThemeEraseBackground(CGContextRef context, const HIRect* bounds);
OSStatus HIViewGetBounds(ControlRef control, HIRect* bounds);

// ---- Mouse tracking

using RgnHandle = struct OpaqueRgn*;
RgnHandle NewRgn();
/// Makes the region a rectangle, in a window's coordinates.
void RectRgn(RgnHandle region, const Rect* rect);
void DisposeRgn(RgnHandle region);

using MouseTrackingRef = struct OpaqueMouseTrackingRef*;
struct MouseTrackingRegionID {
    OSType signature;
    SInt32 id;
};
/// Sends kEventMouseEntered and kEventMouseExited to the target (the window when null) as the mouse crosses the
/// region's edge. The region is copied. Disabled at first.
OSStatus CreateMouseTrackingRegion(WindowRef window, RgnHandle region, RgnHandle clip, UInt32 options,
                                   MouseTrackingRegionID id, void* refCon, EventTargetRef target,
                                   MouseTrackingRef* ref);
OSStatus SetMouseTrackingRegionEnabled(MouseTrackingRef ref, Boolean enabled);
/// Ends it; null is ignored.
OSStatus ReleaseMouseTrackingRegion(MouseTrackingRef ref);

using ThemeCursor = UInt32;
inline constexpr ThemeCursor kThemeArrowCursor = 0;
inline constexpr ThemeCursor kThemePointingHandCursor = 10;
OSStatus SetThemeCursor(ThemeCursor cursor);
