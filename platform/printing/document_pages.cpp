#include "platform/printing/document_pages.h"

#include "platform/foundation/CFCollections.h"

#include <algorithm>
#include <vector>

#include <qpdf/Pipeline.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFExc.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>
#include <qpdf/QPDFPageObjectHelper.hh>
#include <qpdf/QPDFWriter.hh>

namespace {

/// For each page whether the range has it.
std::vector<bool> pagesInRange(const std::string& range, std::size_t count) {
    std::vector<bool> isIn(count, range.empty());
    for (std::size_t at = 0; at < range.size();) {
        std::size_t digits = 0;
        const std::size_t first = std::stoul(range.substr(at), &digits);
        at += digits;
        std::size_t last = first;
        if (at < range.size() && range[at] == '-') {
            ++at;
            last = count;
            if (at < range.size() && range[at] != ',') {
                last = std::stoul(range.substr(at), &digits);
                at += digits;
            }
        }
        for (std::size_t page = std::max<std::size_t>(first, 1); page <= std::min(last, count); ++page) {
            isIn[page - 1] = true;
        }
        ++at;  // the comma
    }
    return isIn;
}

void pickPages(QPDF& pdf, const std::string& range) {
    QPDFPageDocumentHelper document(pdf);
    const std::vector<QPDFPageObjectHelper> pages = document.getAllPages();
    const std::vector<bool> isIn = pagesInRange(range, pages.size());
    for (std::size_t i = 0; i < pages.size(); ++i) {
        if (!isIn[i]) {
            document.removePage(pages[i]);
        }
    }
}

/// The page goes into the document, and not both into a third one, so that the document's forms stay whole.
void addCover(QPDF& pdf, QPDF& front, int rotation) {
    QPDFPageObjectHelper page = QPDFPageDocumentHelper(front).getAllPages().at(0);
    page.rotatePage(rotation, true);
    QPDFPageDocumentHelper(pdf).addPage(page, true);
}

/// The sink took no more.
struct WriteFault : std::exception {};

/// What qpdf writes, into a sink: its own files lose what a full disk refuses at their end.
class SinkPipeline : public Pipeline {
public:
    explicit SinkPipeline(ByteSink& sink) : Pipeline("job", nullptr), sink_(sink) {}

    void write(const unsigned char* data, std::size_t size) override {
        if (!sink_.write({reinterpret_cast<const char*>(data), size})) {
            throw WriteFault();
        }
    }
    void finish() override {}

private:
    ByteSink& sink_;
};

}  // namespace

bool writePages(const Cover& cover, const std::string& range, const std::string& document, ByteSink& destination,
                std::string* reason) {
    SinkPipeline output(destination);
    try {
        QPDF front;
        QPDF pdf;
        pdf.setSuppressWarnings(true);
        pdf.processFile(document.c_str());
        pickPages(pdf, range);
        if (cover.pdf != nullptr) {
            front.processMemoryFile("cover", reinterpret_cast<const char*>(CFDataGetBytePtr(cover.pdf)),
                                    static_cast<std::size_t>(CFDataGetLength(cover.pdf)));
            addCover(pdf, front, cover.rotation);
        }
        if (QPDFPageDocumentHelper(pdf).getAllPages().empty()) {
            *reason = "has none of the pages " + range;
            return false;
        }
        QPDFWriter writer(pdf);
        writer.setOutputPipeline(&output);
        writer.setPreserveEncryption(false);  // the filters have no password
        writer.write();
        return true;
    } catch (const WriteFault&) {
    } catch (const QPDFExc& error) {
        *reason = error.getMessageDetail();
    } catch (const std::exception& error) {
        *reason = error.what();
    }
    return false;
}

std::optional<std::size_t> countPages(const std::string& document) {
    try {
        QPDF pdf;
        pdf.setSuppressWarnings(true);
        pdf.processFile(document.c_str());
        return static_cast<std::size_t>(pdf.getRoot().getKey("/Pages").getKey("/Count").getIntValue());
    } catch (const std::exception&) {
        return std::nullopt;
    }
}
