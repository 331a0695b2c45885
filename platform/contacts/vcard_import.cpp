#include "platform/contacts/vcard_import.h"

#include "platform/contacts/card_identity.h"
#include "platform/contacts/vcard_split.h"

#include <QString>
#include <QStringDecoder>

#include <algorithm>
#include <iterator>

namespace {

struct ReasonOfFault {
    SplitFault fault;
    ABImportReason reason;
};

// fault, reason
constexpr ReasonOfFault kReasons[] = {
    {SplitFault::TextOutside, kABImportTextOutside},
    {SplitFault::NoEnd, kABImportNoEnd},
    {SplitFault::ZeroByte, kABImportZeroByte},
};
static_assert(std::size(kReasons) == 3);

ABImportReason reasonOf(SplitFault fault) {
    return std::find_if(std::begin(kReasons), std::end(kReasons), [&](const auto& row) { return row.fault == fault; })
        ->reason;
}

/// Some programs write UTF-16, with the mark that says so.
bool isUtf16(std::string_view file) {
    return file.starts_with("\xFF\xFE") || file.starts_with("\xFE\xFF");
}

std::string utf8OfUtf16(std::string_view file) {
    QStringDecoder decoder(QStringDecoder::Utf16);
    const QString text = decoder.decode(QByteArrayView(file.data(), qsizetype(file.size())));
    return text.toStdString();
}

bool saysAnything(const Card& card) {
    constexpr const char* kTelling[] = {"FN", "ORG", "TEL", "EMAIL", "NICKNAME"};
    return card.namePart(NamePart::Given) || card.namePart(NamePart::Family) ||
           std::any_of(std::begin(kTelling), std::end(kTelling),
                       [&card](const char* attribute) { return card.textOf(attribute).has_value(); });
}

}  // namespace

ImportedCards readImportedCards(std::string_view file) {
    const SplitCards split = isUtf16(file) ? splitCards(utf8OfUtf16(file)) : splitCards(file);
    ImportedCards result;
    for (const SplitProblem& problem : split.problems) {
        result.problems.push_back({reasonOf(problem.fault), problem.line});
    }
    for (std::size_t i = 0; i < split.cards.size(); ++i) {
        CardOwner card = readIdentifiedCard(split.cards[i]);
        if (saysAnything(*card)) {
            card->keepAsText();
            result.cards.push_back(std::move(card));
        } else {
            result.problems.push_back({kABImportNothingInside, split.lines[i]});
        }
    }
    std::sort(result.problems.begin(), result.problems.end(),
              [](const ImportProblem& left, const ImportProblem& right) { return left.line < right.line; });
    if (result.problems.size() > std::size_t{kABMaximumImportProblems}) {
        result.problems.resize(std::size_t{kABMaximumImportProblems});
    }
    return result;
}
