#include "host/preview/sheet_words.h"

#include "driver/job/instruction_values.h"
#include "host/preview/finish_marks.h"
#include "host/preview/sheet_picture.h"
#include "host/settings/paper_words.h"
#include "host/settings/setting_words.h"
#include "host/settings/summary.h"
#include "host/settings/texts.h"
#include "platform/foundation/text.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace {

std::string text(CFBundleRef texts, const char* key, const std::vector<std::string>& values = {}) {
    return utf8Text(localized(texts, CFStringMakeConstant(key), values).get());
}

struct KindRow {
    SheetKind kind;
    const char* key;  // null for a sheet whose pages say all
};
constexpr std::array kKinds{
    // kind, key
    KindRow{SheetKind::document, nullptr},
    KindRow{SheetKind::cover, "Preview Cover"},
    KindRow{SheetKind::insert, "Preview Insert"},
    KindRow{SheetKind::separator, "Preview Separator"},
    KindRow{SheetKind::slipSheet, "Preview Slip Sheet"},
    KindRow{SheetKind::faxCover, "Preview Fax Cover"},
    KindRow{SheetKind::banner, nullptr},
};

struct FaultRow {
    PageFault fault;
    const char* key;
};
constexpr std::array kFaults{
    // fault, key
    FaultRow{PageFault::takesTooLong, "Preview Fault Time"},
    FaultRow{PageFault::crashes, "Preview Fault Crash"},
    FaultRow{PageFault::takesTooMuchMemory, "Preview Fault Memory"},
    FaultRow{PageFault::isDamaged, "Preview Fault Damage"},
    FaultRow{PageFault::needsPassword, "Preview Fault Password"},
    FaultRow{PageFault::isGone, "Preview Fault Gone"},
    FaultRow{PageFault::cannotBeDrawn, "Preview Fault Program"},
};

/// "page 5", "pages 5 and 6", "pages 5 to 8", "pages 1, 8 and 3".
std::string pagesWords(std::vector<std::int32_t> pages, CFBundleRef texts) {
    const auto number = [](std::int32_t page) { return std::to_string(page + 1); };
    if (pages.size() == 1) {
        return text(texts, "Preview Page", {number(pages.front())});
    }
    const bool isRow = std::ranges::adjacent_find(pages, [](auto a, auto b) { return b != a + 1; }) == pages.end();
    if (pages.size() > 2 && isRow) {
        return text(texts, "Preview Pages To", {number(pages.front()), number(pages.back())});
    }
    std::string first = number(pages.front());
    for (std::size_t i = 1; i + 1 < pages.size(); ++i) {
        first = text(texts, "Preview List", {first, number(pages[i])});
    }
    return text(texts, "Preview Pages And", {first, number(pages.back())});
}

std::string contentWords(const JobSheets& job, const Sheet& sheet, bool isSide2, CFBundleRef texts) {
    if (sheet.kind == SheetKind::banner) {
        std::string all = text(texts, "Preview Banner");
        for (const std::string& words : bannerWords(job, texts)) {
            all = text(texts, "Preview List", {all, words});
        }
        return all;
    }
    std::vector<std::int32_t> pages;
    for (const std::int32_t cell : job.plan.cellsOf(isSide2 ? sheet.side2 : sheet.side1)) {
        if (cell != kBlankCell) {
            pages.push_back(cell);
        }
    }
    const auto* const row = std::ranges::find(kKinds, sheet.kind, &KindRow::kind);
    const std::string kind = row->key != nullptr ? text(texts, row->key) : std::string();
    const bool isBlank = pages.empty() && (sheet.kind != SheetKind::faxCover || isSide2);
    const std::string content = !pages.empty() ? pagesWords(std::move(pages), texts)
                                : isBlank      ? text(texts, "Preview Blank")
                                               : std::string();
    return kind.empty() || content.empty() ? kind + content : text(texts, "Preview List", {kind, content});
}

/// Paper of the usual type needs no word for it, nor what is as it is with `other` paper.
std::string paperWords(const Paper& paper, const Paper& other, const PrintSession& session, CFBundleRef texts) {
    const auto& options = session.usual().options;
    const auto type = std::ranges::find(options, "MediaType", [](const auto& option) { return option.first; });
    const std::string usual = type == options.end() ? std::string() : type->second;
    std::string all;
    const auto add = [&](const std::string& words) {
        all = all.empty() ? words : text(texts, "Preview List", {all, words});
    };
    for (const auto& [keyword, part] :
         {std::pair{"MediaColor", &Paper::color}, {"PageSize", &Paper::size}, {"MediaType", &Paper::type}}) {
        const std::string& option = paper.*part;
        const bool isUsual = keyword == std::string_view("MediaType") && (option == kPlainType || option == usual);
        const bool isTold = !option.empty() && !isUsual && option != other.*part;
        const auto words = isTold ? settingWords(session, texts, keyword, option) : std::nullopt;
        if (words) {
            add(words->choice);
        }
    }
    for (const std::string& detail : paperDetailWords(paper, other, session, texts)) {
        add(detail);
    }
    return all;
}

/// What the printer calls the folds of a sheet; empty for one without.
std::string foldWords(const JobSheets& job, const Sheet& sheet, const PrintSession& session, CFBundleRef texts) {
    if (!job.isFinished(sheet)) {
        return {};
    }
    const auto marks = finishMarks(job.finishing, false, job.papers[sheet.paper].size, job.isHalfSheet(sheet));
    if (std::ranges::find(marks, FinishMark::Kind::fold, &FinishMark::kind) == marks.end()) {
        return {};
    }
    auto options = finishingOptionsOf(job.finishing.value);
    options.emplace_back("TRFoldOptions", job.finishing.folds);
    for (const auto& [mainKeyword, option] : options) {
        const bool isFold = mainKeyword.starts_with("TRFold") && option.find("Fold") != option.npos;
        if (const auto words = isFold ? settingWords(session, texts, mainKeyword, option) : std::nullopt) {
            return words->choice;
        }
    }
    return {};
}

/// "subset 2 of 6"; empty in a stack without them.
std::string subsetWords(const JobSheets& job, std::size_t sheet, CFBundleRef texts) {
    const auto& sheets = job.plan.sheets;
    const auto last = std::ranges::count(sheets, true, &Sheet::beginsSubset) + 1;
    const auto end = sheets.begin() + static_cast<std::ptrdiff_t>(sheet) + 1;
    const auto number = std::count_if(sheets.begin(), end, [](const Sheet& each) { return each.beginsSubset; }) + 1;
    return last == 1 ? std::string() : text(texts, "Preview Subset", {std::to_string(number), std::to_string(last)});
}

}  // namespace

std::string sheetWords(const JobSheets& job, std::size_t sheet, bool isSide2, const PrintSession& session,
                       CFBundleRef texts) {
    const Sheet& shown = job.plan.sheets[sheet];
    const std::string side = text(
        texts, isSide2 ? "Preview Back" : "Preview Front",
        {std::to_string(sheet + 1), std::to_string(job.plan.sheets.size()), contentWords(job, shown, isSide2, texts)});
    // On which paper a banner page comes is the printer's own affair.
    const std::string paper =
        shown.kind == SheetKind::banner ? std::string() : paperWords(job.plan.papers[shown.paper], {}, session, texts);
    std::string all = paper.empty() ? side : text(texts, "Preview Paper", {side, paper});
    for (const std::string& more : {foldWords(job, shown, session, texts), subsetWords(job, sheet, texts)}) {
        all = more.empty() ? all : text(texts, "Preview Paper", {all, more});
    }
    return all;
}

std::vector<std::string> bannerWords(const JobSheets& job, CFBundleRef texts) {
    std::vector<std::string> words;
    const auto add = [&](const char* key, const std::string& value) {
        if (!value.empty()) {
            words.push_back(key == nullptr ? value : text(texts, key, {value}));
        }
    };
    add(nullptr, job.notes.jobName);
    add("Preview Banner From", job.notes.sender);
    add("Preview Banner To", job.notes.recipient);
    add(nullptr, job.notes.bannerMessage);
    add(nullptr, job.notes.specialInstructions);
    return words;
}

std::string stackWords(const JobSheets& job, const PrintSession& session, CFBundleRef texts) {
    constexpr std::size_t kMostPapers = 3;  // one by one
    const SheetPlan& plan = job.plan;
    if (plan.sheets.empty()) {
        return {};
    }
    if (session.instructions().kind == JobKind::fax) {
        const std::size_t pages = plan.sheets.size();
        return pages == 1 ? text(texts, "Preview Fax of Page")
                          : text(texts, "Preview Fax of Pages", {std::to_string(pages)});
    }
    std::vector<std::size_t> counts(plan.papers.size());
    for (const Sheet& sheet : plan.sheets) {
        ++counts[sheet.paper];
    }
    std::string all = pagesOnSheets(plan, texts);
    std::size_t told = 0;
    std::size_t rest = 0;
    for (std::size_t i = 1; i < counts.size(); ++i) {
        const std::string words = paperWords(plan.papers[i], plan.papers.front(), session, texts);
        if (counts[i] == 0) {
            continue;
        }
        if (words.empty() || told == kMostPapers) {
            rest += counts[i];
            continue;
        }
        all = text(texts, told++ == 0 ? "Preview Other Paper" : "Preview More Paper",
                   {all, std::to_string(counts[i]), words});
    }
    if (rest > 0) {
        all = text(texts, "Preview Rest of Papers", {all, std::to_string(rest)});
    }
    if (const auto ends = std::ranges::count(plan.sheets, true, &Sheet::beginsSubset); ends > 0) {
        const int pages = job.finishing.pagesPerSubset;
        all = pages == 1 ? text(texts, "Preview Subsets of Page", {all, std::to_string(ends + 1)})
                         : text(texts, "Preview Subsets", {all, std::to_string(ends + 1), std::to_string(pages)});
    }
    all = ofCopies(all, plan.copies, texts);
    if (job.finishing.offset == Offset::sets && plan.copies > 1 && plan.isCollated) {
        all = text(texts, "Preview Offset Sets", {all});
    }
    return plan.hasBanner ? text(texts, "Preview With Banner", {all}) : all;
}

std::string sideWords(const JobSheets& job, std::size_t sheet, bool isSide2, CFBundleRef texts) {
    const char* const key = job.plan.sheets[sheet].sides == Sides::one ? "Preview Of"
                            : isSide2                                  ? "Preview Of Back"
                                                                       : "Preview Of Front";
    return text(texts, key, {std::to_string(job.plan.sheets.size())});
}

std::string faultWords(const PictureNeed& need, PageFault fault, CFBundleRef texts) {
    const auto* const row = std::ranges::find(kFaults, fault, &FaultRow::fault);
    const std::string what = need.what == PictureNeed::What::page
                                 ? text(texts, "Preview Fault Page", {std::to_string(need.view.page + 1)})
                                 : text(texts, "Preview Fault Other");
    return row == kFaults.end() ? std::string() : text(texts, row->key, {what});
}
