#include "host/settings/paper_words.h"

#include "driver/instructions/read_paper.h"
#include "host/settings/setting_words.h"
#include "host/settings/texts.h"
#include "platform/foundation/text.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

namespace {

constexpr std::string_view kWeightKeyword = "TRMediaWeight";

/// "color" of "MediaColor", "coating" of "TRMediaCoating".
std::string fieldOf(std::string_view mainKeyword) {
    for (const std::string_view prefix : {"Page", "Media", "TRMedia"}) {
        if (mainKeyword.starts_with(prefix)) {
            mainKeyword.remove_prefix(prefix.size());
            break;
        }
    }
    std::string field(mainKeyword);
    field.front() = static_cast<char>(field.front() | 0x20);
    return field;
}

/// What stands behind size, color and type. What is as it is with `other` paper is left out.
std::vector<PaperFact> detailFacts(const Paper& paper, const Paper& other, const PrintSession& session,
                                   CFBundleRef texts) {
    std::vector<PaperFact> facts;
    const auto addName = [&](const char* field, const std::string Paper::*part) {
        if (!(paper.*part).empty() && paper.*part != other.*part) {
            facts.push_back({field, paper.*part, paper.*part});
        }
    };
    addName("name", &Paper::name);
    if (facts.empty()) {
        addName("colorName", &Paper::colorName);
        addName("typeName", &Paper::typeName);
    }
    const auto others = paperAttributes(other);
    for (std::size_t i = 0; const auto& attribute : paperAttributes(paper)) {
        if (attribute == others[i++] || attribute.second.empty()) {
            continue;
        }
        if (attribute.first == kWeightKeyword) {
            facts.push_back(paperWeightFact(std::to_string(paper.weight), texts));
        } else if (settingWords(session, texts, attribute.first, attribute.second)) {
            facts.push_back(paperFact(attribute.first, attribute.second, session, texts));
        }
    }
    return facts;
}

}  // namespace

PaperFact paperFact(const std::string& mainKeyword, const std::string& option, const PrintSession& session,
                    CFBundleRef texts) {
    const auto words = settingWords(session, texts, mainKeyword, option);
    return {fieldOf(mainKeyword), option, words ? words->choice : option};
}

PaperFact paperWeightFact(const std::string& weight, CFBundleRef texts) {
    return {fieldOf(kWeightKeyword), weight, utf8Text(localized(texts, CFSTR("Paper Weight"), {weight}).get())};
}

std::vector<PaperFact> paperFacts(const Paper& paper, const PrintSession& session, CFBundleRef texts) {
    std::vector<PaperFact> facts;
    for (const auto& [mainKeyword, part] :
         {std::pair{"PageSize", &Paper::size}, {"MediaColor", &Paper::color}, {"MediaType", &Paper::type}}) {
        if (!(paper.*part).empty()) {
            facts.push_back(paperFact(mainKeyword, paper.*part, session, texts));
        }
    }
    std::ranges::move(detailFacts(paper, {}, session, texts), std::back_inserter(facts));
    return facts;
}

std::string wordsOf(const std::vector<PaperFact>& facts, CFBundleRef texts) {
    std::vector<std::string> all;
    std::ranges::transform(facts, std::back_inserter(all), &PaperFact::words);
    return joined(texts, all);
}

std::vector<std::string> paperDetailWords(const Paper& paper, const Paper& other, const PrintSession& session,
                                          CFBundleRef texts) {
    std::vector<std::string> words;
    for (PaperFact& fact : detailFacts(paper, other, session, texts)) {
        words.push_back(std::move(fact.words));
    }
    return words;
}
