#include "driver/pages/make_pages.h"

#include "driver/pages/page_tree.h"
#include "driver/pages/sheet_sides.h"
#include "platform/files/plain_file.h"
#include "platform/foundation/message.h"

#include <qpdf/Pipeline.hh>
#include <qpdf/QPDFWriter.hh>

#include <cerrno>
#include <cstdint>
#include <stdexcept>

namespace {

struct Ended : std::exception {};
/// The sink took no more.
struct WriteFault : std::exception {};

/// What qpdf writes, into a sink: its own files lose what a full disk refuses at their end.
class SinkPipeline : public Pipeline {
public:
    explicit SinkPipeline(ByteSink& sink) : Pipeline("pages", nullptr), sink_(sink) {}

    void write(const unsigned char* data, std::size_t size) override {
        if (!sink_.write({reinterpret_cast<const char*>(data), size})) {
            throw WriteFault();
        }
    }
    void finish() override {}

private:
    ByteSink& sink_;
};

class Reporter : public QPDFWriter::ProgressReporter {
public:
    explicit Reporter(const PagesProgress& progress) : progress_(progress) {}
    ~Reporter() override = default;
    void reportProgress(int percent) override {
        if (progress_ && !progress_(percent)) {
            throw Ended();
        }
    }

private:
    const PagesProgress& progress_;
};

/// Leaves nothing of the document but what is printed: what else it has leads to its pages, and keeps them.
void keepOnly(QPDF& pdf, const std::vector<QPDFObjectHandle>& pages) {
    replacePages(pdf, pages);
    for (const char* const key : {"/Outlines", "/Dests", "/Names", "/OpenAction", "/PageLabels", "/Threads",
                                  "/StructTreeRoot", "/MarkInfo", "/AA", "/PieceInfo"}) {
        pdf.getRoot().removeKey(key);
    }
}

}  // namespace

bool makePages(const PagesOrder& order, ByteSink& output, const PagesProgress& progress, std::string* reason) {
    SinkPipeline pipeline(output);
    if (!openPlainFile(order.document, INT64_MAX)) {  // only what is needed of it is read
        *reason = readFault(errno, INT64_MAX);
        return false;
    }
    const std::shared_ptr<QPDF> pdf =
        openPDF([&](QPDF& opened) { opened.processFile(order.document.c_str(), order.password.c_str()); }, reason);
    if (!pdf) {
        return false;
    }
    try {
        const SheetPlan& plan = *order.plan;
        SheetSides sides(*pdf, order);
        std::vector<QPDFObjectHandle> pages;
        for (std::size_t i = 0; i < plan.sheets.size(); ++i) {
            for (const bool isSide2 : {false, true}) {
                if (plan.isSent(i, isSide2)) {
                    pages.push_back(sides.make(plan.sheets[i], isSide2));
                }
            }
        }
        keepOnly(*pdf, pages);
        QPDFWriter writer(*pdf);
        writer.setOutputPipeline(&pipeline);
        writer.setPreserveEncryption(false);  // the filters have no password
        writer.setDecodeLevel(qpdf_dl_none);  // what is packed stays as it is, and what is not, too
        writer.setCompressStreams(false);
        writer.registerProgressReporter(std::make_shared<Reporter>(progress));
        writer.write();
        return true;
    } catch (const WriteFault&) {
        reason->clear();
    } catch (const Ended&) {
        *reason = messageText("was ended");
    } catch (const std::exception& error) {
        *reason = reasonOf(error);
    }
    return false;
}
