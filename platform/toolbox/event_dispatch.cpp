// Handlers, and the journey of an event past them.

#include "platform/toolbox/event_record.h"
#include "platform/toolbox/objects.h"

#include <QApplication>
#include <algorithm>
#include <unordered_set>

namespace {

/// Every handler that is installed now: tells a handle that is gone from one that lives.
std::unordered_set<EventHandlerRef>& installedHandlers() {
    static std::unordered_set<EventHandlerRef> handlers;
    return handlers;
}

int dispatchDepth = 0;

bool wants(const OpaqueEventHandlerRef& handler, OSType eventClass, UInt32 kind) {
    return std::any_of(handler.types.begin(), handler.types.end(), [&](const EventTypeSpec& type) {
        return type.eventClass == eventClass && type.eventKind == kind;
    });
}

/// Whether an event that a target did not take goes on to the target above.
bool travels(OSType eventClass, UInt32 kind) {
    switch (eventClass) {
        case kEventClassControl:
            return kind != kEventControlDraw && kind != kEventControlHitTest && kind != kEventControlActivate;
        case kEventClassMouse:
        case kEventClassHIObject:
            return false;
        default:
            return true;
    }
}

struct ApplicationTarget final : OpaqueEventTargetRef {};

}  // namespace

/// A journey: the handlers that will be asked, in order, and how far it has come.
struct OpaqueEventHandlerCallRef {
    EventRef event;
    OpaqueEventTargetRef* target;
    std::vector<std::shared_ptr<OpaqueEventHandlerRef>> path;
    std::size_t next = 0;

    OSStatus goOn() {
        while (next < path.size()) {
            const std::shared_ptr<OpaqueEventHandlerRef> handler = path[next++];
            if (handler->target == nullptr) {
                continue;
            }
            const std::size_t here = next;
            const OSStatus status = handler->proc(this, event, handler->userData);
            if (status != eventNotHandledErr) {
                return status;
            }
            if (next != here) {
                // The handler has already sent the event on and nobody took it: the journey is over.
                return eventNotHandledErr;
            }
        }
        if (next == path.size()) {
            ++next;
            return target->handleByDefault(event);
        }
        return eventNotHandledErr;
    }
};

OpaqueEventTargetRef::~OpaqueEventTargetRef() {
    for (const auto& handler : handlers) {
        handler->target = nullptr;
        installedHandlers().erase(handler.get());
    }
}

OSStatus OpaqueEventTargetRef::handleByDefault(EventRef) {
    return eventNotHandledErr;
}

bool OpaqueEventTargetRef::hasHandlerFor(OSType eventClass, UInt32 kind) const {
    return std::any_of(handlers.begin(), handlers.end(),
                       [&](const auto& handler) { return wants(*handler, eventClass, kind); });
}

bool isDispatching() {
    return dispatchDepth > 0;
}

DispatchScope::DispatchScope() {
    ++dispatchDepth;
}

DispatchScope::~DispatchScope() {
    --dispatchDepth;
}

OSStatus InstallEventHandler(EventTargetRef target, EventHandlerUPP handler, ItemCount count, const EventTypeSpec* list,
                             void* userData, EventHandlerRef* ref) {
    if (target == nullptr || handler == nullptr || (list == nullptr && count > 0)) {
        return paramErr;
    }
    auto installed = std::make_shared<OpaqueEventHandlerRef>(
        OpaqueEventHandlerRef{handler, userData, std::vector<EventTypeSpec>(list, list + count), target});
    installedHandlers().insert(installed.get());
    if (ref != nullptr) {
        *ref = installed.get();
    }
    target->handlers.push_back(std::move(installed));
    return noErr;
}

OSStatus RemoveEventHandler(EventHandlerRef ref) {
    if (installedHandlers().erase(ref) == 0) {
        return eventHandlerAlreadyRemovedErr;
    }
    auto& handlers = ref->target->handlers;
    ref->target = nullptr;
    std::erase_if(handlers, [ref](const auto& handler) { return handler.get() == ref; });
    return noErr;
}

OSStatus SendEventToEventTarget(EventRef event, EventTargetRef target) {
    if (event == nullptr || target == nullptr) {
        return paramErr;
    }
    OpaqueEventHandlerCallRef journey{event, target, {}, 0};
    const bool onwards = travels(event->eventClass, event->kind);
    for (const OpaqueEventTargetRef* stop = target; stop != nullptr; stop = onwards ? stop->nextTarget() : nullptr) {
        for (auto handler = stop->handlers.rbegin(); handler != stop->handlers.rend(); ++handler) {
            if (wants(**handler, event->eventClass, event->kind)) {
                journey.path.push_back(*handler);
            }
        }
    }
    ++dispatchDepth;
    const OSStatus status = journey.goOn();
    --dispatchDepth;
    return status;
}

OSStatus CallNextEventHandler(EventHandlerCallRef next, EventRef event) {
    if (next == nullptr || event != next->event) {
        return paramErr;
    }
    return next->goOn();
}

EventTargetRef GetControlEventTarget(ControlRef control) {
    return control;
}

EventTargetRef GetWindowEventTarget(WindowRef window) {
    return window;
}

EventTargetRef GetApplicationEventTarget() {
    static ApplicationTarget application;
    return &application;
}
