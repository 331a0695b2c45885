// The component plug-in model: factories and instances known by UUIDs, interfaces in the manner of COM.
#pragma once

#include "platform/foundation/CFUUID.h"

using CFPlugInRef = CFBundleRef;
using HRESULT = SInt32;
using ULONG = UInt32;
using LPVOID = void*;
using REFIID = CFUUIDBytes;

/// The first four slots of every interface table.
struct IUnknownVTable {
    void* reserved;
    HRESULT (*QueryInterface)(void* instance, REFIID interface, LPVOID* out);
    ULONG (*AddRef)(void* instance);
    ULONG (*Release)(void* instance);
};

/// The base interface, 00000000-0000-0000-C000-000000000046.
CFUUIDRef IUnknownUUID();

using CFPlugInFactoryFunction = void* (*)(CFAllocatorRef allocator, CFUUIDRef type);

/// A new plug-in for the bundle folder, with the factories that its Info.plist declares ("CFPlugInFactories": factory
/// UUID to function name; "CFPlugInTypes": type UUID to an array of factory UUIDs) registered. Null, with
/// CFBundleGetLastError, when the bundle cannot be opened.
CFPlugInRef CFPlugInCreate(CFAllocatorRef allocator, CFURLRef url);

/// A new array of the factory UUIDs that the plug-in declares for the type; empty when there are none.
CFArrayRef CFPlugInFindFactoriesForPlugInTypeInPlugIn(CFUUIDRef type, CFPlugInRef plugIn);

/// Calls the factory for an instance of the type: a pointer to a record whose first field points at an
/// IUnknownVTable. Null when the factory is unknown, its bundle does not load or it refuses.
void* CFPlugInInstanceCreate(CFAllocatorRef allocator, CFUUIDRef factory, CFUUIDRef type);

/// Announced by instances: while a factory has instances, its bundle stays loaded.
void CFPlugInAddInstanceForFactory(CFUUIDRef factory);
void CFPlugInRemoveInstanceForFactory(CFUUIDRef factory);
/// Instances that are announced now; for tests.
CFIndex CFPlugInGetInstanceCount(CFUUIDRef factory);
