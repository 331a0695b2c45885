#include "platform/drawing/picture_pixels.h"

#include "platform/drawing/units.h"
#include "platform/foundation/message.h"

#include <QImageReader>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <cstring>

#include <sys/stat.h>

namespace {

constexpr qint64 kMostPixels = 200'000'000;
constexpr qint64 kMostBytes = 256 * 1024 * 1024;
/// Enough for a sheet's width at twice the resolution of a fax.
constexpr int kLargestSide = 2400;

/// Why the file cannot be a picture, before anything is read from it; empty when it may be one.
std::string fileFault(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) {
        return systemMessage(errno);
    }
    if (!S_ISREG(status.st_mode)) {  // a pipe would wait for its writer
        return messageText("is not a file");
    }
    return status.st_size > kMostBytes ? messageText("is larger than %1 MB", {kMostBytes >> 20}) : std::string();
}

}  // namespace

std::optional<Picture> Picture::read(const std::string& path, PictureInk ink, std::string* reason) {
    *reason = fileFault(path);
    if (!reason->empty()) {
        return std::nullopt;
    }
    QImageReader reader(textOf(path));
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    if (!reader.canRead()) {
        *reason = messageText("is no picture: %1", {reader.errorString().toStdString()});
        return std::nullopt;
    }
    const QSize size = reader.size();
    if (qint64{size.width()} * size.height() > kMostPixels) {
        *reason = messageText("is too large: %1 by %2 pixels", {size.width(), size.height()});
        return std::nullopt;
    }
    if (std::max(size.width(), size.height()) > kLargestSide) {
        reader.setScaledSize(size.scaled(kLargestSide, kLargestSide, Qt::KeepAspectRatio).expandedTo({1, 1}));
    }
    const QImage image = reader.read();
    if (image.isNull()) {
        *reason = messageText("cannot be read: %1", {reader.errorString().toStdString()});
        return std::nullopt;
    }
    QImage onWhite(image.size(), QImage::Format_RGB32);
    onWhite.fill(Qt::white);
    QPainter(&onWhite).drawImage(0, 0, image);
    const auto format = ink == PictureInk::grays ? QImage::Format_Grayscale8 : QImage::Format_RGB888;
    const double reduction =
        std::max(1.0, std::max(size.width(), size.height()) / double(std::max(image.width(), image.height())));
    return Picture(std::make_unique<Pixels>(Pixels{onWhite.convertToFormat(format), reduction}));
}

Picture::Picture(std::unique_ptr<Pixels> pixels) : pixels_(std::move(pixels)) {}
Picture::Picture(Picture&& other) noexcept = default;
Picture& Picture::operator=(Picture&& other) noexcept = default;
Picture::~Picture() = default;

int Picture::width() const {
    return pixels_->image.width();
}

int Picture::height() const {
    return pixels_->image.height();
}

Picture Picture::lightened(double ink) const {
    QImage image = pixels_->image;
    std::array<uchar, 256> part{};
    for (std::size_t i = 0; i < part.size(); ++i) {
        part[i] = static_cast<uchar>(std::lround(255 - ink * (255.0 - static_cast<double>(i))));
    }
    for (int y = 0; y < image.height(); ++y) {
        uchar* const line = image.scanLine(y);
        std::transform(line, line + row(y).size(), line, [&part](uchar pixel) { return part[pixel]; });
    }
    return Picture(std::make_unique<Pixels>(Pixels{image, pixels_->reduction}));
}

double Picture::reduction() const {
    return pixels_->reduction;
}

std::span<const unsigned char> Picture::row(int index) const {
    const QImage& image = pixels_->image;
    return {image.constScanLine(index), static_cast<std::size_t>(image.width()) * image.depth() / 8};
}
