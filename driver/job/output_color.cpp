#include "driver/job/output_color.h"

#include "driver/instructions/ticket_values.h"
#include "driver/job/printer_abilities.h"
#include "model/settings/ppd_access.h"

bool offersBlackAndWhite(PMPrinter printer) {
    return hasOption(printer, kColorCorrectionKeyword, kBlackAndWhiteCorrection);
}

void chooseColorCorrection(PMPrinter printer, OutputColor asked, PMTicketRef printSettings) {
    const auto keyword = makeString(kColorCorrectionKeyword);
    const bool isBlackAndWhite = choiceOf(printSettings, keyword.get()) == kBlackAndWhiteCorrection;
    if (asked == OutputColor::asPrinter || (asked == OutputColor::blackAndWhite) == isBlackAndWhite) {
        return;
    }
    const char* const needed = isBlackAndWhite ? kAutomaticCorrection : kBlackAndWhiteCorrection;
    if (hasOption(printer, kColorCorrectionKeyword, needed)) {
        PPDSetMainKeyword(printSettings, keyword.get(), makeString(needed).get());
    }
}
