// What stands behind an EventRef. Private to this folder.
#pragma once

#include "platform/toolbox/Events.h"

#include <QByteArray>
#include <map>

struct OpaqueEventRef {
    struct Parameter {
        EventParamType type = 0;
        QByteArray bytes;
    };

    OSType eventClass;
    UInt32 kind;
    std::map<EventParamName, Parameter> parameters;
};
