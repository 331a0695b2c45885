// What the shell keeps from Prologue to Terminate.
#pragma once

#include "core/features/panel_interface.h"
#include "platform/foundation/CFRef.h"
#include "platform/toolbox/Controls.h"
#include "platform/toolbox/Events.h"
#include "ui/image_import_manager.h"

#include <algorithm>
#include <memory>
#include <vector>

inline constexpr OSType kShellSignature = FourCharCode("Tshl");

// Numbers of the shell's controls.
inline constexpr SInt32 kShellPane = 10;
inline constexpr SInt32 kPanelContainer = 15;
inline constexpr SInt32 kPanelSelector = 16;
inline constexpr SInt32 kPanelArea = 17;
inline constexpr SInt32 kUnknownModelText = 18;
inline constexpr SInt32 kPreviousPanel = 1966;
inline constexpr SInt32 kNextPanel = 1967;

/// One built-in panel.
struct PanelRecord {
    const char* getter;  // its name; a constant
    PDEInterfaceTable table;
    PMPDEContext context;
    CFRef<CFStringRef> title;
    CFRef<CFStringRef> kind;
    CFStringRef helpPage;  // of the help book; a constant
    ControlRef pane;       // ('TSgb', number); null before Initialize
    bool opened;
    SInt16 number;  // from 1, without gaps; kNoPanel for one that the model has not, until Terminate
};
inline constexpr SInt16 kNoPanel = -1;

struct PDEShellContext {
    bool opened;
    CFRef<CFBundleRef> bundle;
    CFRef<CFStringRef> title;
    PMPrintSession session;
    std::vector<PanelRecord> panels;
    // In the dialog, from Initialize on.
    WindowRef window;
    ControlRef parentPane;
    ControlRef defaultButton;
    ControlRef cancelButton;
    // From the nib, from the first Open on.
    ControlRef shellPane;
    ControlRef selector;
    ControlRef container;
    ControlRef area;
    std::unique_ptr<ImageImportManager> images;
    EventHandlerUPP buttonHandler;
    EventHandlerUPP windowHandler;
    EventHandlerRef windowHandlerRef;
    EventHandlerRef defaultButtonHandlerRef;
    EventHandlerRef cancelButtonHandlerRef;

    SInt16 panelCount() const {
        return static_cast<SInt16>(
            std::ranges::count_if(panels, [](const PanelRecord& panel) { return panel.number != kNoPanel; }));
    }

    /// Calls `action` for every panel, in the order of their numbers.
    template <typename Action>
    void forEachPanel(Action action) {
        for (PanelRecord& panel : panels) {
            if (panel.number != kNoPanel) {
                action(panel);
            }
        }
    }
};

inline PDEShellContext* ShellContext(PMPDEContext context) {
    return reinterpret_cast<PDEShellContext*>(context);
}
