// What the Paper and Output panel keeps from Prologue to Terminate.
#pragma once

#include "core/features/panel_interface.h"
#include "model/stock_dialogs/stock_menu.h"
#include "panels/paper_output/paper_output_sync.h"

// Numbers of the panel's controls.
inline constexpr SInt32 kPaperOutputPane = 100;
inline constexpr SInt32 kJobTypePopup = 102;
inline constexpr SInt32 kJobTypeSetupButton = 103;
inline constexpr SInt32 kStockButton = 104;
inline constexpr SInt32 kStockSummary = 105;
inline constexpr SInt32 kStockIcon = 106;
inline constexpr SInt32 kSeparatorsButton = 107;
inline constexpr SInt32 kFinishingButton = 108;
inline constexpr SInt32 kFinishingText = 109;
inline constexpr SInt32 kOutputDestinationPopup = 110;
inline constexpr SInt32 kCollateStaplePopup = 111;
inline constexpr SInt32 kBookletButton = 112;
inline constexpr SInt32 kDuplexPopup = 113;
inline constexpr SInt32 kOutputColorPopup = 115;

struct _PaperOutputContext {
    bool opened = false;
    CFBundleRef bundle = nullptr;  // lent
    CFRef<CFStringRef> title;
    ControlRef hostPane = nullptr;

    PaperOutputSettings settings;
    PPDKeywordPairs collateStaplePairs;
    _StockMenuCommandEventHandlerData stockMenu{};

    // Null until the first Open, and where the printer has nothing to choose.
    ControlRef pane = nullptr;
    ControlRef stockButton = nullptr;
    ControlRef separatorsButton = nullptr;
    ControlRef finishingButton = nullptr;
    ControlRef finishingText = nullptr;
    ControlRef duplexPopup = nullptr;
    ControlRef collateStaplePopup = nullptr;
    ControlRef outputDestinationPopup = nullptr;
    ControlRef outputColorPopup = nullptr;
    ControlRef bookletButton = nullptr;
    ControlRef jobTypePopup = nullptr;
    ControlRef jobTypeSetupButton = nullptr;

    EventHandlerRef hitHandler = nullptr;
    EventHandlerRef commandHandler = nullptr;
};

inline _PaperOutputContext* PaperOutputContext(PMPDEContext context) {
    return reinterpret_cast<_PaperOutputContext*>(context);
}
