// A job that was read back, as it is told: with the printer's names for what it was asked for, and without secrets.
#pragma once

#include "driver/proof/proof.h"
#include "host/settings/paper_words.h"
#include "host/settings/printer.h"
#include "platform/foundation/CFBundle.h"

#include <optional>
#include <string>
#include <vector>

struct ProofReport {
    /// A command or an instruction.
    struct Value {
        std::string name;
        std::optional<std::string> value;  // none for a secret, such as a passcode
    };
    struct Sheet {
        std::vector<PaperFact> paper;     // a size that the printer has no name for has no option
        std::optional<PaperFact> source;  // the tray that the job takes it from, when it says so
        std::optional<Size> size;         // in points
        bool isTwoSided = false;
        bool isTumbled = false;  // turned over its short edge
        ProofSide side1;
        ProofSide side2;
    };
    /// What is done with each set.
    struct Finishing {
        const char* kind;      // "staple", "punch", "bind", "fold", "booklet", "offset"
        std::string count;     // of staples or holes; empty where there is none
        std::string position;  // where, as the printer was told it: "TopLeft"; empty for nowhere said
        std::string style;     // of a fold or a booklet, as the printer was told it
        std::string words;     // in a line
    };

    std::vector<Value> commands;  // settings only: all others say where the job begins and ends
    std::vector<Value> instructions;
    int copies = 1;
    bool isCollated = true;
    std::vector<Sheet> sheets;  // of one copy
    std::vector<Finishing> finishing;
    std::optional<PaperFact> tray;    // where sets come out, when the job says it
    std::vector<std::string> errors;  // of the PostScript
};

/// In the words of the printer's PPD; `texts` is the program's own bundle.
ProofReport reportOf(const Proof& proof, const Printer& printer, CFBundleRef texts);
