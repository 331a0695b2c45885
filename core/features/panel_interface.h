// The interface through which a print dialog drives an extension, and the extension's shell drives its panels.
//
// The dialog gets an object of ten operations from the plug-in's factory (see plugin_factory.h). The built-in panels
// offer the same ten slots to the shell through exported getters, the first three of them null: nobody counts a panel.
//
// Order of the calls: Prologue, which makes the context that every later operation takes; Initialize; then Sync,
// GetSummaryText, Open and Close as the user comes and goes; last Terminate, which ends the context.
#pragma once

#include "platform/foundation/CFBase.h"
#include "platform/printing/PMSession.h"

struct OpaqueControlRef;  // a control of the toolbox, which this floor does not know

// Identifiers of the plug-in model. The first two are the platform's, the third is declared in Info.plist as well.
#define kPDEPlugInTypeID CFSTR("BDB091F4-E57F-11D3-B5CC-0050E4603277")
#define kPDEInterfaceID CFSTR("A996FD7E-B738-11D3-8519-0050E4603277")
#define kPDEFactoryID CFSTR("4F2A7C31-8E5B-11D8-A3C2-0019E3D4B7A1")

/// The plug-in's own bundle, for CFBundleGetBundleWithIdentifier.
#define kPDEBundleIdentifier CFSTR("com.tavro.print.pde.tavrofeatures.zr410_420")
/// The user-option kind of the shell and of every panel.
#define kPDEPanelKind CFSTR("com.tavro.print.pde.tavrofeatureskind")

/// A null context, or a printer that the shell refuses.
inline constexpr OSStatus kPMInvalidPDEContext = -9530;

/// An implementation's own record.
using PMPDEContext = struct OpaquePMPDEContext*;
using PMPDEFlags = UInt32;
using PMPDERef = struct OpaquePMPDERef*;

/// The operations that do the work. Strings and arrays that they hand out are lent, a panel's summaries until its next
/// ones or its end; only those that the shell hands out are the dialog's. Sync copies the tickets to the controls
/// (true) or the controls to the tickets (false).
struct PDEOperations {
    OSStatus (*Prologue)(PMPDEContext* context, OSType* creator, CFStringRef* kind, CFStringRef* title,
                         UInt32* maximumWidth, UInt32* maximumHeight);
    OSStatus (*Initialize)(PMPDEContext context, PMPDEFlags* flags, PMPDERef reference, OpaqueControlRef* parentPane,
                           PMPrintSession session);
    OSStatus (*Sync)(PMPDEContext context, PMPrintSession session, Boolean ticketsToControls);
    OSStatus (*GetSummaryText)(PMPDEContext context, CFArrayRef* titles, CFArrayRef* summaries);
    OSStatus (*Open)(PMPDEContext context);
    OSStatus (*Close)(PMPDEContext context);
    OSStatus (*Terminate)(PMPDEContext context, OSStatus status);
};

struct PMPlugInAPIVersion {
    UInt32 buildVersionMajor;
    UInt32 buildVersionMinor;
    UInt32 baseVersionMajor;
    UInt32 baseVersionMinor;
};

struct PMPlugInHeaderInterface;

/// The ten slots, in the platform's order.
struct PDEInterfaceTable {
    OSStatus (*Retain)(PMPlugInHeaderInterface* interface);
    /// Takes one owner and clears the caller's variable.
    OSStatus (*Release)(PMPlugInHeaderInterface** interface);
    OSStatus (*GetAPIVersion)(PMPlugInHeaderInterface* interface, PMPlugInAPIVersion* version);
    PDEOperations operations;
};
static_assert(sizeof(PDEInterfaceTable) == 10 * sizeof(void*));

/// A panel's interface object; the head of the shell's.
struct PlugInIntf {
    PDEInterfaceTable* table;
};

/// The shell's interface object, counted by Retain and Release.
struct PMPlugInHeaderInterface {
    PlugInIntf interface;
    UInt32 referenceCount;
};

/// For the entry points that are found by name in the bundle; everything else is hidden.
#define TAVRO_PLUGIN_EXPORT extern "C" __attribute__((visibility("default")))

/// What a panel exports, for example as GetAboutPanelInterface.
using PanelInterfaceGetter = OSStatus (*)(PlugInIntf** interface);

/// Makes a panel's interface object, for each panel's CreatePanelInterface. Object and table come from the system
/// allocator (the shell frees both once it has copied the table). Always 0: without memory the object or its table is
/// null.
OSStatus MakePanelInterface(const PDEOperations& operations, PlugInIntf** interface);
