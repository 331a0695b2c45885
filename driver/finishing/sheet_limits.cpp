#include "driver/finishing/sheet_limits.h"

#include "core/features/feature_database.h"
#include "core/features/installable_options.h"
#include "core/features/model_features.h"
#include "core/features/printer_features.h"
#include "core/features/printer_model.h"
#include "platform/foundation/CFNumber.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/CFURL.h"
#include "platform/foundation/text.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <type_traits>

namespace {

struct ClosePPD {
    void operator()(PPDContext context) const { ppdCloseCompiledPPDFromTicket(context); }
};
using OpenPPD = std::unique_ptr<std::remove_pointer_t<PPDContext>, ClosePPD>;

double numberOf(CFTypeRef value) {
    double number = 0;
    if (CFGetTypeID(value) == CFNumberGetTypeID()) {
        CFNumberGetValue(static_cast<CFNumberRef>(value), kCFNumberDoubleType, &number);
    }
    return number;
}

/// The numbers of a dictionary among the properties of a feature or keyword.
std::map<std::string, double> numbersOf(CFDictionaryRef described, CFStringRef property) {
    std::map<std::string, double> numbers;
    const CFTypeRef value = TDPGetFeatureProperty(described, property);
    if (CFGetTypeID(value) != CFDictionaryGetTypeID()) {
        return numbers;
    }
    const auto* const dictionary = static_cast<CFDictionaryRef>(value);
    const auto count = static_cast<std::size_t>(CFDictionaryGetCount(dictionary));
    std::vector<const void*> keys(count);
    std::vector<const void*> values(count);
    CFDictionaryGetKeysAndValues(dictionary, keys.data(), values.data());
    for (std::size_t i = 0; i < count; ++i) {
        if (CFGetTypeID(keys[i]) == CFStringGetTypeID()) {
            numbers[utf8Text(static_cast<CFStringRef>(keys[i]))] = numberOf(values[i]);
        }
    }
    return numbers;
}

void addLimits(const std::map<std::string, double>& numbers, std::vector<SheetLimit>* limits) {
    for (const auto& [name, sheets] : numbers) {
        const std::size_t blank = std::min(name.find(' '), name.size());
        limits->push_back(
            {name.substr(0, blank), name.substr(std::min(blank + 1, name.size())), static_cast<std::int64_t>(sheets)});
    }
}

bool isFor(const SheetLimit& limit, const std::string& mainKeyword, const std::string& option) {
    return limit.mainKeyword == mainKeyword && option != "None" && option.starts_with(limit.options);
}

/// As many sheets of the limits' paper as one of this paper is thick.
double thicknessOf(const Paper& paper, const SheetLimits& limits) {
    const auto known = limits.weights.find(paper.type);
    const double weight = paper.weight > 0 ? paper.weight : known != limits.weights.end() ? known->second : 0;
    return limits.weight > 0 ? std::max(weight / limits.weight, 1.0) : 1;
}

}  // namespace

void useDeviceProfile(const std::string& file) {
    TDPInitializeFromFile(makeFileURL(file).get());
}

SheetLimits sheetLimitsOf(PMTicketRef printerInfo) {
    SheetLimits limits;
    PPDContext context = nullptr;
    if (ppdOpenCompiledPPDFromTicket(printerInfo, &context) != noErr) {
        return limits;
    }
    const OpenPPD ppd(context);
    const std::string model = ModelOfPrinter(context);
    const bool isLoaded = LoadInstallableOptions(printerInfo, context, LoadPrinterModel(model));
    const auto name = makeString(model);  // which the features do not keep
    const ModelFeatures features(name.get());
    for (const CFDictionaryRef feature : features.options()) {
        CFStringRef installed = nullptr;
        getInstallableOptionValue(static_cast<CFStringRef>(TDPGetFeatureProperty(feature, CFSTR("MainKeyword"))),
                                  &installed);
        const CFTypeRef keyword = CFDictionaryGetValue(TDPGetFeatureSyntax(feature, kTDPSyntaxKeyword), installed);
        if (CFGetTypeID(keyword) == CFDictionaryGetTypeID()) {
            const auto* const described = static_cast<CFDictionaryRef>(keyword);
            addLimits(numbersOf(described, CFSTR("SheetLimits")), &limits.most);
            addLimits(numbersOf(described, CFSTR("SheetMinimums")), &limits.least);
        }
    }
    const CFDictionaryRef types = features.feature(CFSTR("MediaType"));
    limits.weight = numberOf(TDPGetFeatureProperty(types, CFSTR("LimitWeight")));
    limits.weights = numbersOf(types, CFSTR("Weights"));
    if (isLoaded) {
        UnloadInstallableOptions();
        UnloadPrinterModel();
    }
    return limits;
}

std::vector<SheetExcess> findSheetExcesses(const SheetLimits& limits,
                                           const std::vector<std::pair<std::string, std::string>>& options,
                                           const SheetPlan& plan) {
    std::int64_t sheets = 0;
    double height = 0;
    for (const Sheet& sheet : plan.sheets) {
        if (sheet.kind != SheetKind::slipSheet) {
            ++sheets;
            height += thicknessOf(plan.papers[sheet.paper], limits);
        }
    }
    const auto thickness = static_cast<std::int64_t>(std::ceil(height - 0.001));
    std::vector<SheetExcess> excesses;
    const auto add = [&](SheetExcess::Kind kind, const auto& option, const SheetLimit& limit) {
        excesses.push_back({kind, option.first, option.second, limit.sheets, sheets, thickness});
    };
    for (const auto& option : options) {
        for (const SheetLimit& limit : limits.most) {
            if (isFor(limit, option.first, option.second) && thickness > limit.sheets) {
                add(sheets > limit.sheets ? SheetExcess::Kind::tooMany : SheetExcess::Kind::tooThick, option, limit);
            }
        }
        for (const SheetLimit& limit : limits.least) {
            if (isFor(limit, option.first, option.second) && sheets < limit.sheets) {
                add(SheetExcess::Kind::tooFew, option, limit);
            }
        }
    }
    return excesses;
}
