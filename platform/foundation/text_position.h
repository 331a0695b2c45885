// Places in text files, as error messages name them.
#pragma once

#include "platform/foundation/message.h"
#include "platform/foundation/objects.h"

/// Line and column, both from 1.
struct TextPosition {
    qint64 line = 1;
    qint64 column = 1;
};

/// A message for those who have Qt.
inline QString messageOf(std::string_view english, std::initializer_list<MessageValue> values = {}) {
    return QString::fromStdString(messageText(english, values));
}

/// "line 3, column 7: reason".
inline CFRef<CFStringRef> describeFault(TextPosition where, const QString& reason) {
    return makeString(messageOf("line %1, column %2: %3", {where.line, where.column, reason.toStdString()}));
}
