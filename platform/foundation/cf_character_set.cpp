#include "platform/foundation/CFCharacterSet.h"

#include "platform/foundation/objects.h"

#include <QList>

#include <algorithm>

struct CFCharacterSetObject final : CFObject {
    static constexpr ObjectKind kKind = ObjectKind::CharacterSet;

    explicit CFCharacterSetObject(bool (*rule)(char32_t)) : CFObject(kKind), holds(rule) {}
    explicit CFCharacterSetObject(QList<uint> members) : CFObject(kKind), listed(std::move(members)) {
        std::sort(listed.begin(), listed.end());
    }

    bool (*holds)(char32_t) = nullptr;  // null: the listed code points
    QList<uint> listed;                 // sorted
};

namespace {

bool isControl(char32_t c) {
    const QChar::Category category = QChar::category(c);
    return category == QChar::Other_Control || category == QChar::Other_Format;
}

bool isWhitespaceOrNewline(char32_t c) {
    return QChar::isSpace(c);
}

bool isDecimalDigit(char32_t c) {
    return QChar::category(c) == QChar::Number_DecimalDigit;
}

CFCharacterSetRef makeConstant(bool (*rule)(char32_t)) {
    auto* set = new CFCharacterSetObject(rule);
    set->makeImmortal();
    return set;
}

}  // namespace

CFCharacterSetRef CFCharacterSetGetPredefined(CFCharacterSetPredefinedSet set) {
    static const CFCharacterSetRef control = makeConstant(isControl);
    static const CFCharacterSetRef whitespaceAndNewline = makeConstant(isWhitespaceOrNewline);
    static const CFCharacterSetRef decimalDigit = makeConstant(isDecimalDigit);
    switch (set) {
        case kCFCharacterSetControl:
            return control;
        case kCFCharacterSetWhitespaceAndNewline:
            return whitespaceAndNewline;
        case kCFCharacterSetDecimalDigit:
            return decimalDigit;
    }
    return nullptr;
}

CFCharacterSetRef CFCharacterSetCreateWithCharactersInString(CFAllocatorRef, CFStringRef string) {
    return checked(string) ? new CFCharacterSetObject(textOf(string).toUcs4()) : nullptr;
}

Boolean CFCharacterSetIsLongCharacterMember(CFCharacterSetRef set, UInt32 codePoint) {
    const CFCharacterSetObject* object = checked(set);
    if (!object) {
        return false;
    }
    return object->holds ? object->holds(codePoint)
                         : std::binary_search(object->listed.begin(), object->listed.end(), codePoint);
}

SInt32 CFCharacterGetDigitValue(UInt32 codePoint) {
    return isDecimalDigit(codePoint) ? QChar::digitValue(codePoint) : -1;
}
