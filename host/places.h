// Where the program finds its parts: beside its own executable, built or installed.
#pragma once

#include <string>

/// TavroFeatures.plugin; in the folder that $TAVRO_PLUGIN_DIR names, when it is set.
std::string pluginPath();
/// The plug-in's data about printers.
std::string deviceProfilePath();
/// The program's own bundle, with its windows and texts.
std::string hostBundlePath();
/// The program that looks at documents (driver/worker).
std::string pageReaderPath();
/// The program that makes PDFs of other documents (driver/worker).
std::string converterPath();
/// The program that draws pages (driver/worker).
std::string pageDrawerPath();
/// The PPD of the sample printer.
std::string samplePPDPath();
