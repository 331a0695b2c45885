#include "host/settings/paper_words.h"

#include "driver/instructions/read_paper.h"
#include "host/script/text.h"
#include "host/settings/setting_words.h"
#include "host/settings/texts.h"

#include <string_view>

std::vector<std::string> paperDetailWords(const Paper& paper, const Paper& other, const PrintSession& session,
                                          CFBundleRef texts) {
    std::vector<std::string> words;
    const auto addName = [&](const std::string Paper::*part) {
        if (!(paper.*part).empty() && paper.*part != other.*part) {
            words.push_back(paper.*part);
        }
    };
    addName(&Paper::name);
    if (words.empty()) {
        addName(&Paper::colorName);
        addName(&Paper::typeName);
    }
    const auto others = paperAttributes(other);
    for (std::size_t i = 0; const auto& attribute : paperAttributes(paper)) {
        if (attribute == others[i++] || attribute.second.empty()) {
            continue;
        }
        if (attribute.first == std::string_view("TRMediaWeight")) {
            words.push_back(utf8(localized(texts, CFSTR("Paper Weight"), {std::to_string(paper.weight)}).get()));
        } else if (const auto found = settingWords(session, texts, attribute.first, attribute.second)) {
            words.push_back(found->choice);
        }
    }
    return words;
}
