// Paper in the words of its printer.
#pragma once

#include "host/settings/print_session.h"
#include "platform/foundation/CFBundle.h"

#include <string>
#include <vector>

/// One thing that is known of paper.
struct PaperFact {
    std::string field;   // "size", "color", "type", "name", "colorName", "typeName", "weight", "coating" and the like
    std::string option;  // of the PPD, or a name or number: "Blue"; empty for a size that the printer has no name for
    std::string words;   // what people call it: "Blue", "120 g/m²"
};

/// One option of a main keyword of paper in words: what the printer calls it, or the option itself where the printer
/// has it not.
PaperFact paperFact(const std::string& mainKeyword, const std::string& option, const PrintSession& session,
                    CFBundleRef texts);
/// The weight, in grams per square metre.
PaperFact paperWeightFact(const std::string& weight, CFBundleRef texts);

/// All that a paper says, in the order in which people read it: size, color, type, names, attributes. `texts` is the
/// program's own bundle.
std::vector<PaperFact> paperFacts(const Paper& paper, const PrintSession& session, CFBundleRef texts);

/// The facts' words, with commas between them; empty for none.
std::string wordsOf(const std::vector<PaperFact>& facts, CFBundleRef texts);

/// Its name, or else the names of its color and type; its weight, and what the printer calls its other attributes. What
/// is as it is with `other` paper is left out.
std::vector<std::string> paperDetailWords(const Paper& paper, const Paper& other, const PrintSession& session,
                                          CFBundleRef texts);
