// Text to bytes and back, strictly: what does not convert without loss does not convert.
#pragma once

#include "platform/foundation/CFString.h"

#include <QByteArray>
#include <QString>

#include <optional>

/// The text of the bytes; nothing when they are not of the encoding, or the encoding is unknown.
std::optional<QString> decodeText(QByteArrayView bytes, CFStringEncoding encoding);

/// The bytes of the text; nothing when a character is outside the encoding, or the encoding is unknown.
std::optional<QByteArray> encodeText(const QString& text, CFStringEncoding encoding);
