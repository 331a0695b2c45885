#include "host/settings/remedy_words.h"

#include "host/settings/texts.h"
#include "platform/foundation/text.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace {

struct NameRow {
    std::string_view mainKeyword;
    std::string_view option;  // empty for all
    const char* name;         // key; %1 is what the printer calls the option
};
// clang-format off
constexpr NameRow kNames[] = {
    // main keyword     option  name
    {"StapleLocation",  "None", "Remedy No Staples"},
    {"TRFoldOptions",   "None", "Remedy No Folds"},
    {"TRStaple",        "None", "Remedy No Staples"},
    {"TRPunch",         "None", "Remedy No Holes"},
    {"TRFold",          "None", "Remedy No Fold"},
    {"TRBind",          "None", "Remedy No Binding"},
    {"TRBooklet",       "None", "Remedy No Booklet Maker"},
    {"Jog",             "None", "Remedy No Offset"},
    {"Duplex",          "None", "Remedy One Side"},
    {"JCLPasscode",     "None", "Remedy No Passcode"},
    {"PageSize",        "",     "Remedy Paper Size"},
    {"MediaColor",      "",     "Remedy Paper Color"},
};
static_assert(std::size(kNames) == 12);
// clang-format on

}  // namespace

std::string nameOfChange(const SettingChange& change, CFBundleRef texts) {
    const auto* const row = std::ranges::find_if(kNames, [&](const NameRow& name) {
        return name.mainKeyword == change.mainKeyword && (name.option.empty() || name.option == change.option);
    });
    const auto& [title, choice, panel] = change.words;
    return utf8Text(row == std::end(kNames) ? localized(texts, CFSTR("Remedy Other"), {title, choice}).get()
                                            : localized(texts, CFStringMakeConstant(row->name), choice).get());
}

std::string nameOfChanges(const std::vector<SettingChange>& changes, CFBundleRef texts) {
    return changes.size() == 1
               ? nameOfChange(changes.front(), texts)
               : utf8Text(localized(texts, CFSTR("Remedy Several"), std::to_string(changes.size())).get());
}

std::string listOfChanges(const std::vector<SettingChange>& changes, CFBundleRef texts) {
    std::vector<std::string> lines;
    for (const SettingChange& change : changes) {
        const auto& [title, choice, panel] = change.words;
        lines.push_back(utf8Text(panel.empty()
                                     ? localized(texts, CFSTR("Remedy Change"), {title, choice}).get()
                                     : localized(texts, CFSTR("Remedy Change Panel"), {title, choice, panel}).get()));
    }
    return listed(texts, lines);
}
