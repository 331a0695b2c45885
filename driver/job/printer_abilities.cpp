#include "driver/job/printer_abilities.h"

#include "model/records/finishing.h"
#include "platform/foundation/text.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string_view>

namespace {

struct ToneRow {
    std::string_view name;  // of the instruction
    int ColorTones::*tone;
};
constexpr std::array kTones{
    // name, tone
    ToneRow{"tavro-lightness", &ColorTones::lightness},        ToneRow{"tavro-contrast", &ColorTones::contrast},
    ToneRow{"tavro-saturation", &ColorTones::saturation},      ToneRow{"tavro-cyan-red", &ColorTones::cyanRed},
    ToneRow{"tavro-magenta-green", &ColorTones::magentaGreen}, ToneRow{"tavro-yellow-blue", &ColorTones::yellowBlue},
};
static_assert(kTones.size() == 6);

}  // namespace

bool hasOption(PMPrinter printer, const std::string& mainKeyword, const std::string& option) {
    return PMPrinterHasSetting(printer, makeString(mainKeyword).get(), makeString(option).get());
}

bool hasOption(PMPrinter printer, const ColorInstruction& color) {
    return !color.option.empty() && hasOption(printer, color.mainKeyword, color.option);
}

bool hasOptions(PMPrinter printer, const std::vector<ColorInstruction>& colors) {
    return std::ranges::all_of(colors, [&](const ColorInstruction& color) { return hasOption(printer, color); });
}

bool isInstalled(PMPrinter printer, PMTicketRef printerInfo, const std::string& mainKeyword,
                 const std::string& option) {
    JobTicket alone;
    alone.choose(mainKeyword, option);
    CFArrayRef conflicts = nullptr;
    return hasOption(printer, mainKeyword, option) &&
           PMPrinterCopyConflicts(printer, alone.get(), printerInfo, &conflicts) == noErr &&
           CFArrayGetCount(CFRef<CFArrayRef>::adopt(conflicts).get()) == 0;
}

PaperShape shapeOf(PMPrinter printer, const Paper& paper) {
    PMPaper found{};
    if (PMPrinterGetPaper(printer, makeString(paper.size).get(), &found) != noErr) {
        return {kUsualPage, 0, 0, kUsualPage.width, kUsualPage.height};
    }
    return {{found.width, found.height}, found.left, found.bottom, found.right, found.top};
}

PrinterAbilities abilitiesOf(PMPrinter printer) {
    return {hasOption(printer, kMirrorKeyword, "True"), hasOption(printer, kRotateKeyword, "True"),
            hasOption(printer, kNegativeKeyword, "True"),
            hasOption(printer, kFinishingMainKeywords.front(), kNoFinishingOption)};
}

ColorTones tonesOf(const JobInstructions& job, PMPrinter printer) {
    constexpr int kMost = 100;
    ColorTones tones;
    for (const auto* const colors : {&job.usualColors, &job.colors}) {
        for (const ColorInstruction& color : *colors) {
            const auto* const row = std::ranges::find(kTones, std::string_view(color.name), &ToneRow::name);
            if (row != kTones.end() && hasOption(printer, color)) {
                tones.*row->tone = std::clamp(std::atoi(color.value.c_str()), -kMost, kMost);
            }
        }
    }
    return tones;
}
