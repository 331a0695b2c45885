#include "host/settings/setting_changes.h"

#include "host/settings/dictionary_values.h"
#include "host/settings/setting_place.h"
#include "host/settings/setting_words.h"
#include "host/settings/texts.h"
#include "platform/foundation/text.h"

#include <algorithm>

OptionsThen optionsNow(const PrintSession& session) {
    CFMutableDictionaryRef pairs = nullptr;
    PMTicketGetPPDDict(session.printSettings(), kPMTopLevel, &pairs);
    OptionsThen options = pairsIn(pairs);
    std::ranges::sort(options);
    return options;
}

std::string tellChanges(const PrintSession& session, CFBundleRef texts, const OptionsThen& before,
                        const std::function<bool(std::string_view mainKeyword)>& isOwn) {
    std::string all;
    for (const auto& [keyword, option] : optionsNow(session)) {
        const auto then = std::ranges::find(before, keyword, &OptionsThen::value_type::first);
        if (then == before.end() || then->second == option || placeOfSetting(keyword) == nullptr || isOwn(keyword)) {
            continue;
        }
        const auto now = settingWords(session, texts, keyword, option);
        const auto earlier = settingWords(session, texts, keyword, then->second);
        if (now && earlier) {
            const std::string change =
                utf8Text(localized(texts, CFSTR("Changed Setting"), {now->title, earlier->choice, now->choice}).get());
            all = all.empty() ? change : utf8Text(localized(texts, CFSTR("Changed And"), {all, change}).get());
        }
    }
    return all;
}
