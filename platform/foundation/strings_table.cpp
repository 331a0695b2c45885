#include "platform/foundation/strings_table.h"

#include "platform/foundation/CFString.h"
#include "platform/foundation/collections.h"
#include "platform/foundation/text_encoding.h"
#include "platform/foundation/text_position.h"

#include <algorithm>
#include <cctype>
#include <optional>

namespace {

/// Reads entries from the start of the text. After a fault the position stays where it was found.
class Reader {
public:
    explicit Reader(QStringView text) : text_(text) {}

    CFRef<CFDictionaryRef> read() {
        auto table =
            CFRef<CFMutableDictionaryRef>::adopt(new CFDictionaryObject(Elements::Objects, Elements::Objects, false));
        while (skipBlanks() && at_ < text_.size()) {
            const qsizetype start = at_;
            const std::optional<QString> key = readQuoted();
            if (!key || !expect(u'=') || !skipBlanks()) {
                return nullptr;
            }
            const std::optional<QString> value = readQuoted();
            if (!value || !expect(u';')) {
                return nullptr;
            }
            const CFRef<CFStringRef> keyObject = makeString(*key);
            if (table.get()->find(keyObject.get())) {
                fail(start, QStringLiteral("the key \"%1\" stands there twice").arg(*key));
                return nullptr;
            }
            table.get()->insert(keyObject.get(), makeString(*value).get(), true);
        }
        return reason_.isEmpty() ? CFRef<CFDictionaryRef>::adopt(table.leak()) : nullptr;
    }

    CFRef<CFStringRef> fault() const {
        const QStringView before = text_.first(at_);
        return describeFault({before.count(u'\n') + 1, at_ - before.lastIndexOf(u'\n')}, reason_);
    }

private:
    bool fail(qsizetype position, const QString& reason) {
        at_ = position;
        reason_ = reason;
        return false;
    }

    /// What stands behind the next character.
    QChar next() const { return at_ + 1 < text_.size() ? text_[at_ + 1] : QChar(); }

    /// Blanks and comments; false for a comment without an end.
    bool skipBlanks() {
        while (at_ < text_.size()) {
            const bool slash = text_[at_] == u'/';
            if (text_[at_].isSpace()) {
                ++at_;
            } else if (slash && next() == u'/') {
                const qsizetype end = text_.indexOf(u'\n', at_);
                at_ = end < 0 ? text_.size() : end;
            } else if (slash && next() == u'*') {
                const qsizetype end = text_.indexOf(u"*/", at_ + 2);
                if (end < 0) {
                    return fail(at_, QStringLiteral("the comment has no end"));
                }
                at_ = end + 2;
            } else {
                break;
            }
        }
        return true;
    }

    bool expect(QChar token) {
        if (!skipBlanks()) {
            return false;
        }
        if (at_ == text_.size() || text_[at_] != token) {
            return fail(at_, QStringLiteral("'%1' is missing").arg(token));
        }
        ++at_;
        return true;
    }

    std::optional<QString> readQuoted() {
        const qsizetype start = at_;
        if (at_ == text_.size() || text_[at_] != u'"') {
            fail(at_, QStringLiteral("a text in double quotes is missing"));
            return std::nullopt;
        }
        QString quoted;
        for (qsizetype plain = ++at_; at_ < text_.size(); ++at_) {
            const QChar letter = text_[at_];
            if (letter != u'"' && letter != u'\\') {
                continue;
            }
            quoted += text_.sliced(plain, at_ - plain);
            if (letter == u'"') {
                ++at_;
                if (!quoted.isValidUtf16()) {
                    fail(start, QStringLiteral("half of a surrogate pair"));
                    return std::nullopt;
                }
                return quoted;
            }
            const std::optional<QChar> escaped = readEscape();
            if (!escaped) {
                return std::nullopt;
            }
            quoted += *escaped;
            plain = at_ + 1;
        }
        fail(start, QStringLiteral("the text has no closing quote"));
        return std::nullopt;
    }

    /// From the backslash to the last character of the escape.
    std::optional<QChar> readEscape() {
        const QChar letter = next();
        if (letter == u'u') {
            const QStringView digits = text_.sliced(at_ + 2).left(4);
            const auto isHex = [](QChar c) { return c.unicode() < 0x80 && std::isxdigit(c.unicode()); };
            if (digits.size() == 4 && std::all_of(digits.begin(), digits.end(), isHex)) {
                at_ += 5;
                return QChar(digits.toUShort(nullptr, 16));
            }
        }
        ++at_;
        switch (letter.unicode()) {
            case u'"':
            case u'\\':
                return letter;
            case u'n':
                return u'\n';
            case u't':
                return u'\t';
            default:
                fail(at_ - 1, QStringLiteral("unknown escape"));
                return std::nullopt;
        }
    }

    const QStringView text_;
    qsizetype at_ = 0;
    QString reason_;
};

}  // namespace

CFRef<CFDictionaryRef> readStringsTable(CFDataRef data, CFRef<CFStringRef>* error) {
    CFRef<CFDictionaryRef> table;
    CFRef<CFStringRef> fault;
    const CFDataObject* object = checked(data);
    const std::optional<QString> text = object ? decodeText(object->bytes(), kCFStringEncodingUTF8) : std::nullopt;
    if (text) {
        const bool mark = text->startsWith(QChar::ByteOrderMark);
        Reader reader(QStringView(*text).sliced(mark ? 1 : 0));
        table = reader.read();
        fault = table ? nullptr : reader.fault();
    } else {
        fault = describeFault({}, QStringLiteral("not in UTF-8"));
    }
    if (error) {
        *error = std::move(fault);
    }
    return table;
}
