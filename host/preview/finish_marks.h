// What the finisher does to a sheet, and where.
#pragma once

#include "driver/pages/sheet_geometry.h"
#include "platform/drawing/PixelCanvas.h"

#include <vector>

struct FinishMark {
    enum class Kind : std::uint8_t {
        staple,  // from one end of its wire to the other
        hole,    // its middle is where it begins
        fold,    // a line across the sheet
        turn,    // of a fold: from the part that is folded to where it comes to lie
        tape,    // of a binding: a line along the middle of it
        trim,    // the line along which an edge is cut off
    } kind;
    CanvasPoint from;
    CanvasPoint to;
    bool isAway = false;  // of a fold and its turn: the part comes behind side 1
};

/// In points of side 1, as it stands upright. A booklet has a fold, whether the printer makes it or its reader does.
/// Where no setting says a place it is the finisher's own: one staple at the upper left, all else at the left edge.
/// Half sheets are folded to the size of the others: `isHalfSheet` says whether this is one.
std::vector<FinishMark> finishMarks(const FinishingInstruction& finishing, bool isBooklet, const Size& paper,
                                    bool isHalfSheet);

/// Of a binding's tape.
inline constexpr double kTapeWidth = 20;
