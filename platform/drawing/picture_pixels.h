// What a Picture holds: eight bits of gray a pixel, or of red, green and blue.
#pragma once

#include "platform/drawing/PDFPage.h"

#include <QImage>

struct Picture::Pixels {
    QImage image;
    double reduction;
};
