// What a Picture holds: eight bits of gray a pixel.
#pragma once

#include "platform/drawing/PDFPage.h"

#include <QImage>

struct Picture::Pixels {
    QImage image;
};
