#include "platform/drawing/DocumentPictures.h"

#include <poppler-qt6.h>
#include <unistd.h>
#include <QFile>
#include <QImage>

#include <algorithm>
#include <cmath>
#include <new>

namespace {

/// What the library gives to its callbacks is a value of its own kind.
bool askWhetherUnwanted(const QVariant& closure) {
    return (*static_cast<const std::function<bool()>*>(closure.value<void*>()))();
}

/// The library draws what is seen on a screen; a job has the notes and fields that are printed.
void hideWhatIsNotPrinted(const Poppler::Page& page) {
    for (const auto& annotation : page.annotations()) {
        if (annotation->flags() & Poppler::Annotation::DenyPrint) {
            annotation->setFlags(annotation->flags() | Poppler::Annotation::Hidden);
        }
    }
}

/// Whether the page fills the picture without being stretched by more than what is rounded to whole pixels.
bool isOfShape(double width, double height, const PageView& view) {
    constexpr double kTolerance = 0.02;
    const double stretch = width / height * view.height / view.width;
    return std::abs(stretch - 1) < kTolerance + 1.0 / view.width + 1.0 / view.height;
}

/// The library draws 0xAARRGGBB, multiplied, or 0xFFRRGGBB.
Pixels pixelsOf(const QImage& image) {
    Pixels pixels{image.width(), image.height(), {}};
    pixels.values.reserve(static_cast<std::size_t>(image.width()) * static_cast<std::size_t>(image.height()));
    for (int y = 0; y < image.height(); ++y) {
        const auto* const row = reinterpret_cast<const std::uint32_t*>(image.constScanLine(y));
        pixels.values.insert(pixels.values.end(), row, row + image.width());
    }
    return pixels;
}

}  // namespace

struct DocumentPictures::Source {
    QFile file;
    std::unique_ptr<Poppler::Document> document;  // reads the file
};

DocumentPictures::DocumentPictures(std::unique_ptr<Source> source) : source_(std::move(source)) {}
DocumentPictures::~DocumentPictures() = default;

std::unique_ptr<DocumentPictures> DocumentPictures::open(int file, const std::string& password, DocumentFault* fault) {
    auto source = std::make_unique<Source>();
    *fault = DocumentFault::isDamaged;
    // Others may have read the file by this descriptor before.
    if (lseek(file, 0, SEEK_SET) != 0 || !source->file.open(file, QIODevice::ReadOnly, QFileDevice::DontCloseHandle)) {
        return nullptr;
    }
    const auto secret = QByteArray::fromStdString(password);
    source->document = Poppler::Document::load(&source->file, secret, secret);
    if (!source->document) {
        return nullptr;
    }
    if (source->document->isLocked()) {
        *fault = DocumentFault::needsPassword;
        return nullptr;
    }
    source->document->setRenderHint(Poppler::Document::Antialiasing);
    source->document->setRenderHint(Poppler::Document::TextAntialiasing);
    *fault = DocumentFault::none;
    return std::unique_ptr<DocumentPictures>(new DocumentPictures(std::move(source)));
}

std::optional<Pixels> DocumentPictures::draw(const PageView& view, const std::function<bool()>& isUnwanted) const {
    constexpr double kPointsPerInch = 72;
    Poppler::Document& document = *source_->document;
    const auto page = view.page >= 0 && view.page < document.numPages()
                          ? std::unique_ptr<Poppler::Page>(document.page(view.page))
                          : nullptr;
    if (!page) {
        return std::nullopt;
    }
    const QSizeF size = page->pageSizeF();
    const double width = view.partWidth > 0 ? view.partWidth : size.width();
    const double height = view.partHeight > 0 ? view.partHeight : size.height();
    if (!(width > 0 && height > 0) || !isOfShape(width, height, view)) {
        return std::nullopt;
    }
    hideWhatIsNotPrinted(*page);
    const double across = view.width / width;  // pixels a point
    const double down = view.height / height;
    const auto middle = [](double whole, double part, double scale) {
        return static_cast<int>(std::lround((whole - part) / 2 * scale));
    };
    const QImage image = page->renderToImage(
        kPointsPerInch * across, kPointsPerInch * down, middle(size.width(), width, across),
        middle(size.height(), height, down), view.width, view.height, Poppler::Page::Rotate0, nullptr, nullptr,
        askWhetherUnwanted, QVariant::fromValue(static_cast<void*>(const_cast<std::function<bool()>*>(&isUnwanted))));
    if (isUnwanted()) {
        return std::nullopt;
    }
    if (image.width() != view.width || image.height() != view.height) {
        throw std::bad_alloc();  // the library says nothing else
    }
    const bool isKnown =
        image.format() == QImage::Format_RGB32 || image.format() == QImage::Format_ARGB32_Premultiplied;
    return pixelsOf(isKnown ? image : image.convertToFormat(QImage::Format_ARGB32_Premultiplied));
}
