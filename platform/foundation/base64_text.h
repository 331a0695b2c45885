// Data as a property list writes it.
#pragma once

#include <QByteArray>

#include <optional>

/// A piece of a larger text that is base64 and nothing else. It shares the text and keeps it alive, so that large data
/// that nobody looks at is neither decoded nor copied.
class Base64Text {
public:
    /// Nothing when the piece is anything else, has blanks or is incomplete.
    static std::optional<Base64Text> of(const QByteArray& text, qsizetype start, qsizetype length);

    QByteArrayView view() const { return QByteArrayView(text_).sliced(start_, length_); }
    QByteArray decoded() const { return QByteArray::fromBase64(view().toByteArray()); }

private:
    Base64Text(const QByteArray& text, qsizetype start, qsizetype length)
        : text_(text), start_(start), length_(length) {}

    QByteArray text_;
    qsizetype start_;
    qsizetype length_;
};
