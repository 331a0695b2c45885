#include "core/shell/shell_selection.h"

SInt16 gCurrentPanel = 0;
SInt16 lastTabIndex = 1;

namespace {

void ShowPane(ControlRef pane) {
    MakeControlContent(pane);
    ActivateControl(pane);
    SetControlVisibility(pane, true, true);
    EnableControl(pane);
}

void HidePane(ControlRef pane) {
    DisableControl(pane);
    SetControlVisibility(pane, false, true);
    DeactivateControl(pane);
}

/// Whether the keys go to a control of the shown panel.
bool PanelHasFocus(const PDEShellContext& context) {
    ControlRef control = nullptr;
    GetKeyboardFocus(GetControlOwner(context.container), &control);
    while (control != nullptr && control != context.container) {
        control = GetSuperControl(control);
    }
    return control != nullptr;
}

/// Selects the panel that is `steps` behind the one shown, in a ring.
void StepPanel(PDEShellContext* context, int steps) {
    const int count = context->panelCount();
    if (count == 0) {
        return;
    }
    const auto number = static_cast<SInt16>((gCurrentPanel - 1 + steps + count) % count + 1);
    selectPanel(number, context);
    SetControl32BitValue(context->selector, number);
}

}  // namespace

void selectPanel(SInt16 number, PDEShellContext* context) {
    context->forEachPanel([context](PanelRecord& panel) {
        if (panel.number == lastTabIndex) {
            MakeControlContent(panel.pane);
            panel.table.operations.Sync(panel.context, context->session, false);
        }
    });
    const bool leavesFocus = number != gCurrentPanel && PanelHasFocus(*context);
    HideControl(context->container);
    context->forEachPanel([context, number](PanelRecord& panel) {
        if (panel.number != lastTabIndex) {
            panel.table.operations.Sync(panel.context, context->session, true);
        }
        if (panel.number == number) {
            ShowPane(panel.pane);
            gCurrentPanel = number;
        } else {
            HidePane(panel.pane);
        }
    });
    lastTabIndex = number;
    ShowControl(context->container);
    if (leavesFocus) {
        // Else the keys would go to what comes after the panel in the window.
        SetKeyboardFocus(GetControlOwner(context->selector), context->selector);
    }
}

void SelectNextPanel(PDEShellContext* context) {
    StepPanel(context, 1);
}

void SelectPreviousPanel(PDEShellContext* context) {
    StepPanel(context, -1);
}
