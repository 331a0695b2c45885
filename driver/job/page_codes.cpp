#include "driver/job/page_codes.h"

#include "driver/instructions/read_paper.h"
#include "driver/job/printer_abilities.h"
#include "model/stock/stock_attributes.h"
#include "platform/foundation/text.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <string_view>
#include <vector>

namespace {

/// The code of an option; empty for one that the printer does not have.
std::string codeOf(PMPrinter printer, const char* mainKeyword, const std::string& option) {
    CFStringRef code = nullptr;
    if (PMPrinterCopyOptionCode(printer, makeString(mainKeyword).get(), makeString(option).get(), &code) != noErr) {
        return {};
    }
    return utf8Text(CFRef<CFStringRef>::adopt(code).get());
}

constexpr int kLightest = -3;
constexpr std::array kLightness{"Lightest", "Lighter", "Light", "Normal", "Dark", "Darker", "Darkest"};

bool isFromSlipTray(const Sheet& sheet, const UsualChoices& usual) {
    return sheet.kind == SheetKind::slipSheet && !usual.slipTray.empty();
}

bool hasSlipSheets(const SheetPlan& plan, const UsualChoices& usual) {
    return std::ranges::any_of(plan.sheets, [&](const Sheet& sheet) { return isFromSlipTray(sheet, usual); });
}

class CodeMaker {
public:
    CodeMaker(const SheetPlan& plan, PMPrinter printer, const UsualChoices& usual)
        : plan_(plan),
          printer_(printer),
          usual_(usual),
          hasTrays_((!usual.tray.empty() && usual.tray != kAnyTray) || hasSlipSheets(plan, usual)),
          papers_(plan.papers.size()),
          attributes_(attributesOf(plan)),
          isNegative_(usual.isNegative) {}

    std::string codeAt(const Sheet& sheet, const SheetSide& side) {
        std::string code;
        const bool isFirst = !paper_;
        const std::string& tray = trayOf(sheet);
        if (isFirst || *paper_ != sheet.paper || tray_ != tray) {
            code += (hasTrays_ ? codeOf(printer_, kTrayKeyword, tray) : std::string()) + paperCode(sheet.paper);
        }
        if (isFirst || sides_ != sheet.sides) {
            code += codeOf(printer_, "Duplex", duplexOption(sheet.sides));
        }
        // Code that sets up the printer sets back how dark it prints.
        const std::string lightness = lightnessOf(side);
        if (lightness != lightness_ || (!code.empty() && !lightness.empty())) {
            code += codeOf(printer_, kLightnessKeyword, lightness.empty() ? usual_.lightness : lightness);
        }
        if (const bool isNegative = usual_.isNegative && !plan_.isBlank(side); isNegative != isNegative_) {
            code += codeOf(printer_, kNegativeKeyword, isNegative ? "True" : "False");
            isNegative_ = isNegative;
        }
        paper_ = sheet.paper;
        tray_ = tray;
        sides_ = sheet.sides;
        lightness_ = lightness;
        return code;
    }

private:
    [[nodiscard]] const std::string& trayOf(const Sheet& sheet) const {
        static const std::string kAny = kAnyTray;
        if (isFromSlipTray(sheet, usual_)) {
            return usual_.slipTray;
        }
        return sheet.paper != 0 || usual_.tray.empty() ? kAny : usual_.tray;
    }

    const std::string& paperCode(std::uint32_t number) {
        std::string& code = papers_[number];
        if (code.empty()) {
            const Paper& paper = plan_.papers[number];
            for (const auto& [keyword, option] :
                 {std::pair{"PageSize", &Paper::size}, {"MediaType", &Paper::type}, {"MediaColor", &Paper::color}}) {
                // Else the sheet would be as the one before it.
                const bool isOffered = hasOption(printer_, keyword, paper.*option);
                code += codeOf(printer_, keyword, (isOffered ? paper : plan_.papers[0]).*option);
            }
            for (const auto& [keyword, option] : paperAttributes(paper)) {
                if (attributes_.contains(keyword)) {
                    code += codeOf(printer_, keyword, option.empty() ? kAnyStockOption : option);
                }
            }
        }
        return code;
    }

    /// Attributes that a paper of the job says something of: then each must, as a sheet is else as the one before it.
    static std::set<std::string_view> attributesOf(const SheetPlan& plan) {
        std::set<std::string_view> told;
        for (const Paper& paper : plan.papers) {
            for (const auto& [keyword, option] : paperAttributes(paper)) {
                if (!option.empty()) {
                    told.insert(keyword);
                }
            }
        }
        return told;
    }

    /// Empty for the job's own.
    [[nodiscard]] std::string lightnessOf(const SheetSide& side) const {
        const auto level = plan_.treatments[side.treatment].lightenDarken;
        return level && *level >= kLightest && *level <= -kLightest
                   ? kLightness[static_cast<std::size_t>(*level - kLightest)]
                   : std::string();
    }

    const SheetPlan& plan_;
    PMPrinter printer_;
    const UsualChoices& usual_;
    bool hasTrays_;
    std::vector<std::string> papers_;  // their code, once it is made
    std::set<std::string_view> attributes_;
    std::optional<std::uint32_t> paper_;
    std::string tray_;
    Sides sides_ = Sides::one;
    std::string lightness_;
    bool isNegative_;
};

}  // namespace

const char* duplexOption(Sides sides) {
    switch (sides) {
        case Sides::longEdge:
            return "DuplexNoTumble";
        case Sides::shortEdge:
            return "DuplexTumble";
        default:
            return "None";
    }
}

PageCodes pageCodesOf(const SheetPlan& plan, PMPrinter printer, const UsualChoices& usual) {
    CodeMaker maker(plan, printer, usual);
    PageCodes codes;
    for (std::size_t i = 0; i < plan.sheets.size(); ++i) {
        for (const bool isSide2 : {false, true}) {
            if (plan.isSent(i, isSide2)) {
                const Sheet& sheet = plan.sheets[i];
                codes.add(maker.codeAt(sheet, isSide2 ? sheet.side2 : sheet.side1));
            }
        }
    }
    return codes;
}

bool isUniform(const SheetPlan& plan, const UsualChoices& usual) {
    const auto isUsual = [&](const SheetSide& side) {
        return !plan.treatments[side.treatment].lightenDarken && !(usual.isNegative && plan.isBlank(side));
    };
    return std::ranges::all_of(plan.sheets, [&](const Sheet& sheet) {
        return sheet.paper == 0 && !isFromSlipTray(sheet, usual) && sheet.sides == plan.sheets.front().sides &&
               isUsual(sheet.side1) && (sheet.sides == Sides::one || isUsual(sheet.side2));
    });
}
