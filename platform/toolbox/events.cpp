// Events as records: a class, a kind and named parameters.

#include "platform/toolbox/Events.h"

#include "platform/toolbox/event_record.h"
#include "platform/toolbox/objects.h"

#include <algorithm>
#include <cstring>

OSStatus CreateEvent(CFAllocatorRef, OSType eventClass, UInt32 kind, EventTime, EventAttributes, EventRef* event) {
    if (event == nullptr) {
        return paramErr;
    }
    *event = new OpaqueEventRef{eventClass, kind, {}};
    return noErr;
}

void ReleaseEvent(EventRef event) {
    delete event;
}

OSType GetEventClass(EventRef event) {
    return event != nullptr ? event->eventClass : 0;
}

UInt32 GetEventKind(EventRef event) {
    return event != nullptr ? event->kind : 0;
}

OSStatus SetEventParameter(EventRef event, EventParamName name, EventParamType type, ByteCount size, const void* data) {
    if (event == nullptr || (data == nullptr && size > 0)) {
        return paramErr;
    }
    event->parameters[name] = {type, QByteArray(static_cast<const char*>(data), static_cast<qsizetype>(size))};
    return noErr;
}

OSStatus GetEventParameter(EventRef event, EventParamName name, EventParamType type, EventParamType* outType,
                           ByteCount bufferSize, ByteCount* actualSize, void* data) {
    if (event == nullptr) {
        return paramErr;
    }
    const auto found = event->parameters.find(name);
    if (found == event->parameters.end() || found->second.type != type) {
        return eventParameterNotFoundErr;
    }
    const QByteArray& bytes = found->second.bytes;
    if (outType != nullptr) {
        *outType = found->second.type;
    }
    if (actualSize != nullptr) {
        *actualSize = static_cast<ByteCount>(bytes.size());
    }
    if (data != nullptr) {
        std::memcpy(data, bytes.constData(), std::min(bufferSize, static_cast<ByteCount>(bytes.size())));
    }
    return noErr;
}

ScopedEvent& ScopedEvent::withText(EventParamName name, const QString& text) {
    SetEventParameter(event_, name, typeUnicodeText, static_cast<ByteCount>(text.size()) * sizeof(char16_t),
                      text.utf16());
    return *this;
}

QString eventText(EventRef event, EventParamName name) {
    const auto found = event->parameters.find(name);
    if (found == event->parameters.end() || found->second.type != typeUnicodeText) {
        return {};
    }
    const QByteArray& bytes = found->second.bytes;
    QString text(bytes.size() / static_cast<qsizetype>(sizeof(char16_t)), Qt::Uninitialized);
    std::memcpy(text.data(), bytes.constData(), static_cast<std::size_t>(text.size()) * sizeof(char16_t));
    return text;
}
