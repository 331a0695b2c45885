// The watermark panel's state and what its controls show of it.
#pragma once

#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFRef.h"
#include "platform/printing/PMTicket.h"
#include "platform/toolbox/Controls.h"
#include "platform/toolbox/Events.h"

#include <array>

inline constexpr OSType kWatermarkSignature = FourCharCode("TVRw");

enum WatermarkControl : SInt32 {
    kWatermarkPane = 50,
    kWatermarkBrowser = 100,
    kWatermarkFirstPageOnly = 200,
    kWatermarkOption = 300,
    kWatermarkEdit = 400,
    kWatermarkNew = 500,
    kWatermarkDelete = 600,
    kBackgroundFormPicture = 700,
    kBackgroundFormLabel = 701,
    kBackgroundFormValue = 702,
    kBackgroundFormSetup = 703,
};

// Items of the pop-up.
inline constexpr SInt32 kWatermarkBackground = 1;
inline constexpr SInt32 kWatermarkForeground = 2;

/// Points.
struct PaperExtents {
    double a;
    double b;
};

struct WatermarkContext {
    bool opened;
    CFBundleRef bundle;  // lent
    CFRef<CFBundleRef> editor;
    CFRef<CFStringRef> title;
    CFStringRef selection;  // a name of the list, the none-name, or null
    SInt32 firstPageOnly;   // 0 or 1
    SInt32 option;          // item of the pop-up
    PaperExtents extents;   // of the page, for the editor
    ControlRef hostPane;
    ControlRef pane;     // null until the first Open
    ControlRef browser;  // the same
    CFRef<CFStringRef> noneName;
    EventHandlerRef hitHandler;
    std::array<CFRef<CFMutableArrayRef>, 2> summary;  // the titles and texts that are lent, until the next are made
};

/// The stored names in the order of display, each a string that can be changed where it is. It is the list of the
/// panel that was initialised last; null without one.
extern CFRef<CFMutableArrayRef> listOfWatermarks;
/// The panel that the browser's callbacks work for: the one that was opened last.
extern WatermarkContext* gMyContext;

ControlRef FindWatermarkControl(const WatermarkContext& context, SInt32 number);

/// Whether a watermark is selected. The row for none is told by its string's identity: a watermark may be called so.
bool IsWatermarkSelected(const WatermarkContext& context);

/// What works on a watermark is enabled when one is selected.
void toggleControls(const WatermarkContext& context);

/// Makes the name, one of the list or the none-name, the selection, and selects its row.
void SelectWatermark(WatermarkContext* context, CFStringRef name);

/// Fills the browser with the none-name and the list.
void PrepareWatermarkBrowser(WatermarkContext* context);
void AddWatermarkRow(const WatermarkContext& context, CFStringRef name);
void RemoveWatermarkRow(const WatermarkContext& context, CFStringRef name);
/// The row's name has changed.
void UpdateWatermarkRow(const WatermarkContext& context, CFStringRef name);
