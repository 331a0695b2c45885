// The registry of view classes, and the life of their views.

#include "platform/toolbox/view_classes.h"

#include "platform/toolbox/Views.h"

#include <algorithm>

namespace {

using Registry = std::map<QString, std::unique_ptr<OpaqueHIObjectClassRef>>;

Registry& registry() {
    static Registry classes;
    return classes;
}

OSStatus callHandler(const OpaqueHIObjectClassRef& viewClass, EventRef event, void* userData) {
    const bool listed = std::ranges::any_of(viewClass.types, [&](const EventTypeSpec& type) {
        return type.eventClass == GetEventClass(event) && type.eventKind == GetEventKind(event);
    });
    return listed ? viewClass.handler(nullptr, event, userData) : eventNotHandledErr;
}

}  // namespace

OSStatus HIObjectRegisterSubclass(CFStringRef classID, CFStringRef baseClassID, UInt32, EventHandlerUPP handler,
                                  ItemCount count, const EventTypeSpec* list, void* constructData,
                                  HIObjectClassRef* ref) {
    if (!classID || !CFEqual(baseClassID, kHIViewClassID) || !handler || !list) {
        return paramErr;
    }
    auto& entry = registry()[toQString(classID)];
    if (entry) {
        return hiObjectClassExistsErr;
    }
    entry.reset(new OpaqueHIObjectClassRef{toQString(classID), handler, {list, list + count}, constructData});
    if (ref) {
        *ref = entry.get();
    }
    return noErr;
}

void attachViewClass(OpaqueControlRef* control, const QString& classId) {
    const auto found = registry().find(classId);
    if (found == registry().end()) {
        return;
    }
    const OpaqueHIObjectClassRef& viewClass = *found->second;
    ScopedEvent construct(kEventClassHIObject, kEventHIObjectConstruct);
    construct.with(kEventParamDirectObject, typeControlRef, ControlRef(control));
    if (callHandler(viewClass, construct.get(), viewClass.constructData) != noErr) {
        return;
    }
    control->viewClass = &viewClass;
    GetEventParameter(construct.get(), kEventParamHIObjectInstance, typeVoidPtr, nullptr, sizeof control->viewRecord,
                      nullptr, &control->viewRecord);

    ScopedEvent initialize(kEventClassHIObject, kEventHIObjectInitialize);
    initialize.with(kEventParamDirectObject, typeControlRef, ControlRef(control));
    callViewClass(control, initialize.get());
}

OSStatus callViewClass(OpaqueControlRef* control, EventRef event) {
    return control->viewClass ? callHandler(*control->viewClass, event, control->viewRecord) : eventNotHandledErr;
}

void detachViewClass(OpaqueControlRef* control) {
    if (!control->viewClass) {
        return;
    }
    ScopedEvent destruct(kEventClassHIObject, kEventHIObjectDestruct);
    callViewClass(control, destruct.get());
    control->viewClass = nullptr;
    control->viewRecord = nullptr;
}
