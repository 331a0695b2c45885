// The front door of the bundle: the factory that Info.plist names, and the root object that it makes.
#pragma once

#include "core/features/panel_interface.h"
#include "platform/foundation/CFPlugIn.h"

/// The root object. It answers QueryInterface for the base interface with itself, and for the dialog extension
/// interface with a new PMPlugInHeaderInterface, which lives by its own count. Any other interface is kNoSuchInterface
/// and null.
struct PlugInInstance {
    IUnknownVTable* table;  // points at `base`
    IUnknownVTable base;
    CFUUIDRef factory;  // owned
    UInt32 referenceCount;
};

inline constexpr HRESULT kNoSuchInterface = static_cast<HRESULT>(0x80000004);

/// Makes an instance with a count of 1, announced to the plug-in registry. Null for any other type than
/// kPDEPlugInTypeID, and without memory. The allocator is not used.
TAVRO_PLUGIN_EXPORT void* TavroPDEPluginFactory(CFAllocatorRef allocator, CFUUIDRef type);
