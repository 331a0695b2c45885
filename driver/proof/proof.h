// A job as the printer's controller reads it: its commands, its instructions, and sheet by sheet which paper lies there
// and what is drawn on it.
//
// It knows nothing of settings or plans. PostScript is read by Ghostscript, which tells each wish for the page device
// and each page; what becomes of them is what a printer does.
#pragma once

#include <array>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// What becomes of tones of 25, 50 and 75 per cent of light in red, green, blue and gray, in per cent of light.
inline constexpr std::array kToneSteps{25, 50, 75};
using Tones = std::array<std::array<int, kToneSteps.size()>, 4>;
inline constexpr Tones kUsualTones{kToneSteps, kToneSteps, kToneSteps, kToneSteps};

struct ProofSide {
    bool isBlank = true;
    double left = 0;  // of the ink, in points from the paper's lower left corner
    double bottom = 0;
    double right = 0;
    double top = 0;
    std::string text;  // what can be read there, in one line
    Tones tones = kUsualTones;
};

struct ProofSheet {
    /// What the page device was asked for before the sheet began, by its keys: "MediaColor" to "Blue", "PageSize" to
    /// "612 792".
    std::map<std::string, std::string> device;
    bool isTwoSided = false;
    bool isTumbled = false;  // turned over its short edge
    ProofSide side1;
    ProofSide side2;

    [[nodiscard]] std::string value(const std::string& key) const;
};

struct Proof {
    std::vector<std::string> commands;                              // PJL lines without "@PJL "
    std::vector<std::pair<std::string, std::string>> instructions;  // for the controller, names to values
    std::vector<ProofSheet> sheets;                                 // of one copy
    int copies = 1;
    bool isCollated = true;
    std::map<std::string, std::string> finishing;  // what the page device was asked for last: staple, fold and the like
    std::vector<std::string> errors;               // of the PostScript

    /// The value of "SET NAME=VALUE"; empty when it is not set.
    [[nodiscard]] std::string setting(const std::string& name) const;
    /// All values of an instruction, in their order.
    [[nodiscard]] std::vector<std::string> instruction(const std::string& name) const;
};

/// So long may a job be silent until it counts as endless.
inline constexpr int kPatienceSeconds = 60;

/// Reads a job in a file. Nothing, with the reason, when it cannot be read, is no job for a PostScript printer, or is
/// silent for so many seconds that it seems to have no end. What the interpreter stumbles over is among the errors.
std::optional<Proof> readProof(const std::string& path, std::string* reason, int patience = kPatienceSeconds);
