// Bytes that code attaches to controls.

#include "platform/toolbox/Controls.h"
#include "platform/toolbox/objects.h"

#include <algorithm>
#include <cstring>

OSStatus SetControlProperty(ControlRef control, OSType creator, OSType tag, ByteCount size, const void* data) {
    if (control == nullptr || (data == nullptr && size > 0)) {
        return paramErr;
    }
    control->properties[{creator, tag}] = QByteArray(static_cast<const char*>(data), static_cast<qsizetype>(size));
    return noErr;
}

OSStatus GetControlProperty(ControlRef control, OSType creator, OSType tag, ByteCount bufferSize, ByteCount* actualSize,
                            void* data) {
    if (control == nullptr) {
        return controlHandleInvalidErr;
    }
    const auto found = control->properties.find({creator, tag});
    if (found == control->properties.end()) {
        return controlPropertyNotFoundErr;
    }
    const auto size = static_cast<ByteCount>(found->second.size());
    if (actualSize != nullptr) {
        *actualSize = size;
    }
    if (data != nullptr) {
        std::memcpy(data, found->second.constData(), std::min(size, bufferSize));
    }
    return noErr;
}

OSStatus RemoveControlProperty(ControlRef control, OSType creator, OSType tag) {
    if (control == nullptr) {
        return controlHandleInvalidErr;
    }
    return control->properties.erase({creator, tag}) > 0 ? noErr : controlPropertyNotFoundErr;
}
