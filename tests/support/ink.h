// What of a picture is not paper, and what Ghostscript makes of the same page.
#pragma once

#include "platform/drawing/Pixels.h"
#include "tests/driver/pages/pdf_maker.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <ostream>
#include <string>

/// The smallest box around all ink, in pixels from the upper left corner.
struct InkBox {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};

inline std::ostream& operator<<(std::ostream& out, const InkBox& box) {
    return out << box.left << "," << box.top << " to " << box.right << "," << box.bottom;
}

/// No side is further away than a pixel.
inline bool isSamePlace(const InkBox& one, const InkBox& other) {
    const auto isNear = [](int a, int b) { return std::abs(a - b) <= 1; };
    return isNear(one.left, other.left) && isNear(one.top, other.top) && isNear(one.right, other.right) &&
           isNear(one.bottom, other.bottom);
}

/// Ink is what is rather dark: no paper, no thin line.
inline InkBox inkOf(const Pixels& picture) {
    InkBox box{picture.width, picture.height, 0, 0};
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            const std::uint32_t value =
                picture.values[static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width) +
                               static_cast<std::size_t>(x)];
            const std::uint32_t light = (value >> 16 & 0xFF) + (value >> 8 & 0xFF) + (value & 0xFF);
            if (value >> 24 == 0xFF && light < 3 * 0x60) {
                box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1),
                       std::max(box.bottom, y + 1)};
            }
        }
    }
    return box;
}

/// A page of a PDF, from 0, as Ghostscript draws it at a pixel for each point.
inline Pixels drawnByGhostscript(const std::string& pdf, int page) {
    const std::string number = std::to_string(page + 1);
    const std::string picture = pdf + "." + number + ".pgm";
    outputOfCommand(
        "gs -q -dBATCH -dNOPAUSE -dUseCropBox -sDEVICE=pgmraw -dGraphicsAlphaBits=4 -dTextAlphaBits=4 -r72 "
        "-dFirstPage=" +
        number + " -dLastPage=" + number + " -sOutputFile='" + picture + "' '" + pdf + "'");
    std::ifstream file(picture, std::ios::binary);
    std::string magic;
    std::string comment;
    Pixels pixels;
    int most = 0;
    std::getline(file, magic);
    std::getline(file, comment);
    file >> pixels.width >> pixels.height >> most;
    file.get();
    std::transform(std::istreambuf_iterator<char>(file), {}, std::back_inserter(pixels.values), [](char gray) {
        return 0xFF000000 | static_cast<std::uint32_t>(static_cast<unsigned char>(gray)) * 0x010101;
    });
    return pixels;
}
