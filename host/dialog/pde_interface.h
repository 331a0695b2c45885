// The platform's interface between a print dialog and an extension, as the dialog sees it.
//
// The extension's factory makes an object whose first field points at a table of ten operations, in this order; the
// order and the arguments are the platform's and fixed.
#pragma once

#include "platform/foundation/CFCollections.h"
#include "platform/printing/PMSession.h"
#include "platform/toolbox/ToolboxTypes.h"

/// The kind of plug-in, and the interface that is asked for.
#define kPDEPlugInType CFSTR("BDB091F4-E57F-11D3-B5CC-0050E4603277")
#define kPDEInterface CFSTR("A996FD7E-B738-11D3-8519-0050E4603277")

struct PDEAPIVersion {
    UInt32 buildMajor;
    UInt32 buildMinor;
    UInt32 baseMajor;
    UInt32 baseMinor;
};

using PDEContext = void*;  // the extension's own record

struct PDEInterface {
    struct Table {
        OSStatus (*Retain)(PDEInterface* interface);
        /// Takes one owner and clears the caller's variable.
        OSStatus (*Release)(PDEInterface** interface);
        OSStatus (*GetAPIVersion)(PDEInterface* interface, PDEAPIVersion* version);
        OSStatus (*Prologue)(PDEContext* context, OSType* creator, CFStringRef* kind, CFStringRef* title,
                             UInt32* maximumWidth, UInt32* maximumHeight);
        OSStatus (*Initialize)(PDEContext context, UInt32* flags, void* reference, ControlRef parentPane,
                               PMPrintSession session);
        /// True copies the tickets to the controls, false the controls to the tickets.
        OSStatus (*Sync)(PDEContext context, PMPrintSession session, Boolean ticketsToControls);
        /// Either array may stay null.
        OSStatus (*GetSummaryText)(PDEContext context, CFArrayRef* titles, CFArrayRef* summaries);
        OSStatus (*Open)(PDEContext context);
        OSStatus (*Close)(PDEContext context);
        OSStatus (*Terminate)(PDEContext context, OSStatus status);
    };
    Table* table;
};
static_assert(sizeof(PDEInterface::Table) == 10 * sizeof(void*));

// A plug-in may have more extensions for some printers. It then exports this function, which names the getters of those
// that the printer has whose session the factory's extension was initialized with; the caller releases the array. A
// getter makes an object and a table by the system's allocator, which the caller frees. Nobody counts these objects:
// the first three operations are null.
#define kPDEExtensionGetters CFSTR("TavroPDECopyExtensionGetters")
using PDEExtensionGettersCopier = CFArrayRef (*)();
using PDEInterfaceGetter = OSStatus (*)(PDEInterface** interface);
