// What a printer info ticket holds.
#pragma once

/// The path of the printer's PPD (string).
#define kPMPrinterDescriptionPathKey CFSTR("PMDescriptionPath")
/// The installed options chosen on top of the PPD's own (dictionary, main keyword to option keyword); may be absent.
#define kPMInstalledOptionsKey CFSTR("PMInstalledOptions")
