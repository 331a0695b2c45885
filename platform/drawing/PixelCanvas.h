// A picture of our own making in pixels: shapes, lines, texts and other pictures, with smooth edges.
//
// Places are pixels from the upper left corner, to the right and downwards, unless said otherwise. Texts need the
// toolbox's fonts, so ToolboxInitialize() comes before them.
#pragma once

#include "platform/drawing/PDFPage.h"
#include "platform/drawing/Pixels.h"

#include <array>
#include <memory>
#include <vector>

struct CanvasColor {
    unsigned char red;
    unsigned char green;
    unsigned char blue;
    unsigned char alpha = 255;

    bool operator==(const CanvasColor&) const = default;
};

struct CanvasPoint {
    double x;
    double y;
};

/// The corners of an area, or the ends of the lines of a path.
using CanvasShape = std::vector<CanvasPoint>;

/// Of each value of a color the one that takes its place.
using ToneCurve = std::array<unsigned char, 256>;

/// As PDF has it: x' = a x + c y + e, y' = b x + d y + f.
using CanvasMatrix = std::array<double, 6>;

class PixelCanvas {
public:
    PixelCanvas(int width, int height, const CanvasColor& ground);
    PixelCanvas(PixelCanvas&& other) noexcept;
    PixelCanvas& operator=(PixelCanvas&& other) noexcept;
    ~PixelCanvas();

    void fill(const CanvasShape& area, const CanvasColor& color);
    /// A line along the shape and back to its beginning.
    void outline(const CanvasShape& area, double thickness, const CanvasColor& color);
    /// From point to point; `dashes` are as long as the gaps between them, 0 draws it through.
    void line(const CanvasShape& path, double thickness, const CanvasColor& color, double dashes = 0);
    void disk(const CanvasPoint& middle, double radius, const CanvasColor& color);
    /// A picture as ink on paper, so that its white leaves what is there: its lower left corner is 0, 0 and its upper
    /// right one 1, 1, through a matrix; only what is within an area, unless that is empty.
    void print(const Pixels& picture, const CanvasMatrix& matrix, const CanvasShape& within = {});
    /// A text in points of which one has `scale` pixels.
    void draw(const TextBlock& text, double left, double top, double scale);

    /// All that has been drawn: what is dark becomes light.
    void invert();
    void makeGray();
    /// Colors as far from the gray that is as light as they are, times a factor of 0 or more.
    void saturate(double factor);
    /// Of red, green and blue.
    void bend(const std::array<ToneCurve, 3>& curves);

    /// Ends the drawing.
    Pixels finish();

private:
    struct Surface;
    std::unique_ptr<Surface> surface_;
};
