// What paper looks like before anything is printed on it.
//
// Lengths are points; a sheet stands upright, with the origin at its lower left corner, as in driver/pages.
#pragma once

#include "driver/pages/sheet_geometry.h"
#include "platform/drawing/PixelCanvas.h"

#include <vector>

struct PaperLook {
    CanvasColor color;
    CanvasShape outline;             // the tab included, which may lie beyond the size
    std::vector<CanvasPoint> holes;  // of punched paper: their middles
};

/// `tab` is the place of the sheet in a bank of tab stock, from 0. On side 2 all is the other way round: it is seen as
/// the sheet is turned over, on its long or on its short edge.
PaperLook lookOf(const Paper& paper, const Size& size, int tab, Sides sides, bool isSide2);

/// How many tabs a bank of this paper has; 0 for paper without tabs.
int tabsInBank(const Paper& paper);

/// A hole's.
inline constexpr double kHoleRadius = 9;
/// From the edge of the paper to the middle of its holes.
inline constexpr double kHoleDepth = 34;
/// The middles of holes, along an edge of that length and from its middle; fewer than there are on no edge.
std::vector<double> holePlaces(int count, double edge);

/// A point of side 1, seen from side 2.
CanvasPoint turnedOver(const CanvasPoint& point, const Size& size, Sides sides);
