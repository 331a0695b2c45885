#include "platform/printing/ppd_file.h"

#include "platform/files/plain_file.h"
#include "platform/foundation/message.h"
#include "platform/foundation/text.h"
#include "platform/foundation/user_languages.h"
#include "platform/printing/CompiledPPD.h"
#include "platform/printing/cups_library.h"
#include "platform/printing/ppd_languages.h"
#include "platform/printing/private_file.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <memory>
#include <span>
#include <sstream>

#include <fcntl.h>
#include <unistd.h>

static_assert(kPPDUIBoolean == PPD_UI_BOOLEAN && kPPDUIPickOne == PPD_UI_PICKONE && kPPDUIPickMany == PPD_UI_PICKMANY);

namespace {

struct ClosePPD {
    void operator()(ppd_file_t* ppd) const { cups().ppdClose(ppd); }
};
using OpenedPPD = std::unique_ptr<ppd_file_t, ClosePPD>;

std::string textOf(const char* text) {
    return text == nullptr ? std::string() : text;
}

/// What is in a file that is worth parsing; null, with the reason, for any other.
CFRef<CFMutableDataRef> readPPD(const std::string& path, std::string* reason) {
    auto file = readPlainFile(path, kPPDMaximumBytes);
    if (!file) {
        *reason = readFault(errno, kPPDMaximumBytes);
    } else if (bytesOf(file.get()).starts_with("\x1F\x8B")) {
        // The library would unpack it without a limit.
        *reason = messageText("is compressed; unpack it first");
        file = nullptr;
    }
    return file;
}

/// A descriptor at the beginning of the text, in memory; none, with the reason, when there is no memory for it.
Descriptor openText(std::string_view text, std::string* reason) {
    PrivateFile file(PrivateFile::Place::memory);
    Descriptor own(file.write(text) ? fcntl(file.descriptor(), F_DUPFD_CLOEXEC, 0) : -1);
    if (!own || lseek(own.get(), 0, SEEK_SET) != 0) {
        *reason = systemMessage(file.error() != 0 ? file.error() : errno);
        return {};
    }
    return own;
}

/// What every PPD has, and filters crash or print nothing without; empty for a PPD that has it.
std::string whatIsMissing(ppd_file_t* ppd) {
    if (ppd->product == nullptr) {
        return messageText("it has no Product");
    }
    const ppd_size_t* const size = cups().ppdPageSize(ppd, nullptr);
    return size != nullptr && (size->width <= 0 || size->length <= 0) ? messageText("its default paper has no size")
                                                                      : std::string();
}

struct MarkedPPD {
    OpenedPPD ppd;
    bool isTranslated = false;  // has the user's language
};

/// The PPD with its defaults marked; null with the reason.
MarkedPPD openMarked(const std::string& path, std::string* reason) {
    const auto bytes = readPPD(path, reason);
    const PPDInLanguage own = bytes ? ppdInLanguage(bytesOf(bytes.get()), userLanguages()) : PPDInLanguage();
    Descriptor file = bytes ? openText(own.text, reason) : Descriptor();
    if (!file) {
        return {};
    }
    OpenedPPD ppd(cups().ppdOpenFd(file.release()));  // closes the descriptor in every case
    if (!ppd) {
        int line = 0;
        const ppd_status_t error = cups().ppdLastError(&line);
        *reason = messageText("is not a usable PPD: %1, line %2", {textOf(cups().ppdErrorString(error)), line});
        return {};
    }
    cups().ppdMarkDefaults(ppd.get());
    if (const std::string missing = whatIsMissing(ppd.get()); !missing.empty()) {
        *reason = messageText("is not a usable PPD: %1", {missing});
        return {};
    }
    return {std::move(ppd), own.isTranslated};
}

/// Each option with its marked choice.
OptionList markedChoices(const ppd_file_t& ppd) {
    OptionList marked;
    for (int g = 0; g < ppd.num_groups; ++g) {
        for (int o = 0; o < ppd.groups[g].num_options; ++o) {
            const ppd_option_t& option = ppd.groups[g].options[o];
            for (int c = 0; c < option.num_choices; ++c) {
                if (option.choices[c].marked != 0) {
                    marked.emplace_back(option.keyword, option.choices[c].choice);
                }
            }
        }
    }
    return marked;
}

bool hasParameter(ppd_coption_t* custom, std::initializer_list<ppd_cptype_t> types) {
    for (const auto* parameter = custom == nullptr ? nullptr : cups().ppdFirstCustomParam(custom); parameter != nullptr;
         parameter = cups().ppdNextCustomParam(custom)) {
        if (std::ranges::find(types, parameter->type) != types.end()) {
            return true;
        }
    }
    return false;
}

/// The texts that a PPD has in the user's language.
class Translation {
public:
    Translation(ppd_file_t* ppd, bool hasLanguage) : ppd_(ppd), hasLanguage_(hasLanguage) {}

    /// Its text for a choice of a main keyword, or of an option when the main keyword is "Translation".
    std::string operator()(const char* mainKeyword, const char* name, const char* text) const {
        const ppd_attr_t* const line =
            hasLanguage_ ? cups().ppdFindAttr(ppd_, (std::string(kUserLanguagePrefix) + mainKeyword).c_str(), name)
                         : nullptr;
        return line == nullptr || line->text[0] == '\0' ? text : line->text;
    }

private:
    ppd_file_t* ppd_;
    bool hasLanguage_;
};

/// Whether a choice is "None", or "False" under a text that says so in the PPD's own language.
bool isNothing(std::string_view choice, std::string_view text) {
    return (choice == "None" || choice == "False") && (text == choice || text == "Not Installed");
}

PPDOption makeOption(ppd_file_t* ppd, const ppd_option_t& option, bool installable, const Translation& translated) {
    PPDOption made{option.keyword,
                   translated("Translation", option.keyword, option.text),
                   static_cast<UInt32>(option.ui),
                   installable,
                   {},
                   {}};
    for (int i = 0; i < option.num_choices; ++i) {
        const ppd_choice_t& choice = option.choices[i];
        made.choices.push_back({choice.choice, translated(option.keyword, choice.choice, choice.text),
                                choice.marked != 0, textOf(choice.code), isNothing(choice.choice, choice.text)});
    }
    made.defaultChoice = made.findChoice(option.defchoice);
    ppd_coption_t* const custom = cups().ppdFindCustomOption(ppd, option.keyword);
    made.hasSecretCustom = hasParameter(custom, {PPD_CUSTOM_PASSCODE, PPD_CUSTOM_PASSWORD});
    made.hasTextCustom = made.hasSecretCustom || hasParameter(custom, {PPD_CUSTOM_STRING});
    made.hasNumberCustom = hasParameter(custom, {PPD_CUSTOM_INT}) && cups().cupsArrayCount(custom->params) == 1;
    made.isCommand = option.section == PPD_ORDER_JCL;
    return made;
}

std::vector<PPDPaper> makePapers(const ppd_file_t& ppd, const PPDOption* pageSizes) {
    std::vector<PPDPaper> papers;
    for (int i = 0; i < ppd.num_sizes; ++i) {
        const ppd_size_t& size = ppd.sizes[i];
        const std::string_view keyword = size.name;
        if (keyword == "Custom") {
            continue;
        }
        const auto choice = pageSizes == nullptr ? std::nullopt : pageSizes->findChoice(keyword);
        papers.push_back({std::string(keyword), choice ? pageSizes->choices[*choice].title : std::string(keyword),
                          size.width, size.length, size.left, size.bottom, size.right, size.top});
    }
    return papers;
}

/// A PPD that does not say has them in the usual order.
std::array<std::size_t, 5> customSizeOrder(ppd_file_t* ppd) {
    std::array<std::size_t, 5> order{};
    for (std::size_t i = 0; i < order.size(); ++i) {
        constexpr std::array kNames{"Width", "Height", "WidthOffset", "HeightOffset", "Orientation"};
        const ppd_attr_t* const line = cups().ppdFindAttr(ppd, "ParamCustomPageSize", kNames[i]);
        const int place = line == nullptr ? 0 : std::atoi(textOf(line->value).c_str());
        order[i] = place >= 1 && place <= static_cast<int>(order.size()) ? static_cast<std::size_t>(place) - 1 : i;
    }
    return order;
}

std::string findPasscodeKeyword(const ppd_file_t& ppd) {
    for (void* item = cups().cupsArrayFirst(ppd.coptions); item != nullptr; item = cups().cupsArrayNext(ppd.coptions)) {
        auto& option = *static_cast<ppd_coption_t*>(item);
        const ppd_cparam_t* const parameter = cups().ppdFirstCustomParam(&option);
        if (parameter != nullptr && parameter->type == PPD_CUSTOM_PASSCODE) {
            return option.keyword;
        }
    }
    return {};
}

/// A side in the PPD's own spelling; none for a keyword or choice that the PPD does not have.
std::optional<PPDConstraint::Side> makeSide(ppd_file_t* ppd, std::string keyword, std::string choice) {
    static constexpr std::string_view kCustom = "Custom";
    // "*CustomKeyword True" is how a PPD says that the custom choice of a keyword is taken.
    if (isSameOption(keyword.substr(0, kCustom.size()), kCustom) && isSameOption(choice, "True")) {
        keyword.erase(0, kCustom.size());
        choice = kCustom;
    }
    ppd_option_t* const option = cups().ppdFindOption(ppd, keyword.c_str());
    if (option == nullptr || choice.empty()) {
        return option == nullptr ? std::nullopt : std::optional(PPDConstraint::Side{option->keyword, {}});
    }
    const ppd_choice_t* const found = cups().ppdFindChoice(option, choice.c_str());
    return found == nullptr ? std::nullopt : std::optional(PPDConstraint::Side{option->keyword, found->choice});
}

/// Takes a constraint that names nothing that the PPD does not have: others can never be broken.
void addConstraint(ppd_file_t* ppd, const std::vector<PPDConstraint::Side>& sides, PPDFile* made) {
    PPDConstraint constraint;
    for (const auto& [keyword, choice] : sides) {
        auto side = makeSide(ppd, keyword, choice);
        if (!side) {
            return;
        }
        constraint.sides.push_back(std::move(*side));
    }
    const auto ofJob = std::ranges::find_if(constraint.sides, [&](const PPDConstraint::Side& side) {
        const PPDOption* const option = made->findOption(side.keyword);
        return option == nullptr || !option->installable;
    });
    if (constraint.sides.size() > 1 && ofJob != constraint.sides.end()) {
        made->constraintsOf[std::string(settingOf(ofJob->keyword))].push_back(made->constraints.size());
        made->constraints.push_back(std::move(constraint));
    }
}

/// Reads "*Keyword Choice *Keyword …", the words of a cupsUIConstraints line.
std::vector<PPDConstraint::Side> parseConstraint(const std::string& text) {
    std::vector<PPDConstraint::Side> sides;
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        if (word.starts_with('*')) {
            sides.push_back({word.substr(1), {}});
        } else if (!sides.empty()) {
            sides.back().choice = word;
        }
    }
    return sides;
}

/// As the print server has it: a PPD may have lines of both kinds, and all of them hold.
void addConstraints(ppd_file_t* ppd, PPDFile* made) {
    for (const ppd_const_t& pair : std::span(ppd->consts, static_cast<std::size_t>(ppd->num_consts))) {
        addConstraint(ppd, {{pair.option1, pair.choice1}, {pair.option2, pair.choice2}}, made);
    }
    for (const ppd_attr_t* line = cups().ppdFindAttr(ppd, "cupsUIConstraints", nullptr); line != nullptr;
         line = cups().ppdFindNextAttr(ppd, "cupsUIConstraints", nullptr)) {
        addConstraint(ppd, parseConstraint(textOf(line->value)), made);
    }
}

/// As the print server has it: the newer lines stand for the older ones, and a PPD without any is a PostScript
/// printer's.
std::vector<std::string> makeFilters(ppd_file_t* ppd) {
    std::vector<std::string> filters;
    for (const ppd_attr_t* line = cups().ppdFindAttr(ppd, "cupsFilter2", nullptr); line != nullptr;
         line = cups().ppdFindNextAttr(ppd, "cupsFilter2", nullptr)) {
        filters.push_back(textOf(line->value));
    }
    if (filters.empty()) {
        filters.assign(ppd->filters, ppd->filters + ppd->num_filters);
    }
    if (filters.empty()) {
        filters.emplace_back("application/vnd.cups-postscript 0 -");
    }
    return filters;
}

}  // namespace

std::optional<std::size_t> PPDOption::findChoice(std::string_view choice) const {
    const auto found =
        std::ranges::find_if(choices, [&](const PPDChoice& each) { return isSameOption(each.keyword, choice); });
    if (found == choices.end()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(found - choices.begin());
}

void PPDFile::addOption(PPDOption option) {
    placesOfOptions.try_emplace(option.keyword, options.size());
    options.push_back(std::move(option));
}

const PPDOption* PPDFile::findOption(std::string_view keyword) const {
    const auto found = placesOfOptions.find(keyword);
    return found == placesOfOptions.end() ? nullptr : &options[found->second];
}

std::string PPDFile::attribute(std::string_view keyword) const {
    const auto found = attributes.find(keyword);
    return found == attributes.end() ? std::string() : found->second;
}

std::optional<PPDFile> readPPDFile(const std::string& path, std::string* reason) {
    const auto [ppd, isTranslated] = openMarked(path, reason);
    if (!ppd) {
        return std::nullopt;
    }
    PPDFile made;
    made.name = textOf(ppd->shortnickname != nullptr ? ppd->shortnickname : ppd->nickname);
    const Translation translated(ppd.get(), isTranslated);
    // The library collects the options outside any group in a group of its own, where the first of them stood.
    for (const bool grouped : {false, true}) {
        for (int g = 0; g < ppd->num_groups; ++g) {
            const ppd_group_t& group = ppd->groups[g];
            const std::string_view name = group.name;
            for (int o = 0; o < group.num_options && (name != "General") == grouped; ++o) {
                made.addOption(
                    makeOption(ppd.get(), group.options[o], isSameOption(name, "InstallableOptions"), translated));
            }
        }
    }
    for (int i = 0; i < ppd->num_attrs; ++i) {
        const ppd_attr_t& attribute = *ppd->attrs[i];
        made.attributes.try_emplace(attribute.name, textOf(attribute.value));
    }
    made.papers = makePapers(*ppd, made.findOption("PageSize"));
    if (ppd->variable_sizes != 0) {  // the limits are filled even without custom sizes
        const auto& margins = ppd->custom_margins;
        made.customSizes = PPDCustomSizes{ppd->custom_min[0], ppd->custom_min[1], ppd->custom_max[0],
                                          ppd->custom_max[1], margins[0],         margins[1],
                                          margins[2],         margins[3],         customSizeOrder(ppd.get())};
    }
    addConstraints(ppd.get(), &made);
    made.filters = makeFilters(ppd.get());
    made.passcodeKeyword = findPasscodeKeyword(*ppd);
    return made;
}

std::string_view settingOf(std::string_view keyword) {
    return keyword == "PageRegion" ? "PageSize" : keyword;
}

bool isStandardOption(std::string_view name) {
    static constexpr std::array<std::string_view, 9> kNames{
        "media",         "sides",      "output-bin", "multiple-document-handling", "print-color-mode",
        "print-quality", "finishings", "resolution", "printer-resolution"};
    return std::ranges::any_of(kNames, [&](std::string_view each) { return isSameOption(each, name); });
}

OptionList chooseByStandardOptions(const std::string& path, const OptionList& options) {
    std::string reason;
    const OpenedPPD ppd = options.empty() ? nullptr : openMarked(path, &reason).ppd;
    if (!ppd) {
        return {};
    }
    const OptionList before = markedChoices(*ppd);
    cups_option_t* list = nullptr;
    int count = 0;
    for (const auto& [name, value] : options) {
        count = cups().cupsAddOption(name.c_str(), value.c_str(), count, &list);
    }
    cups().cupsMarkOptions(ppd.get(), count, list);
    cups().cupsFreeOptions(count, list);
    OptionList chosen;
    for (const auto& choice : markedChoices(*ppd)) {
        // A custom size would need its numbers, too.
        if (choice.second != "Custom" && std::ranges::find(before, choice) == before.end()) {
            chosen.push_back(choice);
        }
    }
    return chosen;
}
