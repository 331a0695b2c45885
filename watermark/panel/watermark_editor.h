// The watermark editor: a module of its own inside the plug-in, "WatermarkEditor.bundle".
#pragma once

#include "core/features/panel_interface.h"
#include "platform/foundation/CFBase.h"
#include "watermark/records/watermark_record.h"

/// The module's function "InitializeCocoa": called once after loading.
using InitializeCocoaProc = void (*)();
/// The module's function "editWatermark": lets the user edit the record, in which the panel has set the paper's
/// extents, in a modal window. 0 when the user accepted; else what the record holds is of no meaning. The numbers are
/// always 0.
using EditWatermarkProc = SInt32 (*)(WatermarkRecord* record, SInt32 unused1, CFBundleRef plugIn, SInt32 unused2);

/// Null while no editor is loaded, or when it lacks the function. The plug-in exports both.
TAVRO_PLUGIN_EXPORT InitializeCocoaProc CocoaInitializeCocoa;
TAVRO_PLUGIN_EXPORT EditWatermarkProc CocoaEditWatermark;

/// Opens the bundle of that name in the plug-in's PlugIns folder and loads its code; *privateBundle is the caller's, or
/// null, and a line on standard error says so.
void LoadPrivatePlugIns(CFStringRef bundleName, CFBundleRef* privateBundle, CFBundleRef plugIn);

/// Loads the editor, sets the two pointers and initialises it. The bundle is the caller's; null when there is none.
CFBundleRef LoadWatermarkEditor(CFBundleRef plugIn);
/// Clears the pointers, before the bundle is released.
void ForgetWatermarkEditor();
