// Places in text files, as error messages name them.
#pragma once

#include "platform/foundation/objects.h"

/// Line and column, both from 1.
struct TextPosition {
    qint64 line = 1;
    qint64 column = 1;
};

/// "line 3, column 7: reason".
inline CFRef<CFStringRef> describeFault(TextPosition where, const QString& reason) {
    return makeString(QStringLiteral("line %1, column %2: %3").arg(where.line).arg(where.column).arg(reason));
}
