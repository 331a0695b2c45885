// What a printer info ticket holds.
#pragma once

/// The path of the printer's PPD (string).
// The PPD's path; the address of its file where the path is not UTF-8.
#define kPMPrinterDescriptionPathKey CFSTR("PMDescriptionPath")
/// The installed options chosen on top of the PPD's own (dictionary, main keyword to option keyword); may be absent.
#define kPMInstalledOptionsKey CFSTR("PMInstalledOptions")
