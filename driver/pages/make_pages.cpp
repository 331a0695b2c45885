#include "driver/pages/make_pages.h"

#include "driver/pages/sheet_sides.h"

#include <qpdf/QPDFWriter.hh>

#include <stdexcept>

namespace {

struct Ended : std::exception {};

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

/// The new tree of pages is flat: nothing looks for a page in it.
void replacePages(QPDF& pdf, const std::vector<QPDFObjectHandle>& pages) {
    QPDFObjectHandle tree = pdf.makeIndirectObject(QPDFObjectHandle::newDictionary());
    for (QPDFObjectHandle page : pages) {
        page.replaceKey("/Parent", tree);
    }
    tree.replaceKey("/Type", QPDFObjectHandle::newName("/Pages"));
    tree.replaceKey("/Kids", QPDFObjectHandle::newArray(pages));
    tree.replaceKey("/Count", QPDFObjectHandle::newInteger(static_cast<long long>(pages.size())));
    pdf.getRoot().replaceKey("/Pages", tree);
    // What else a document has leads to pages that are not printed, and keeps them.
    for (const char* const key : {"/Outlines", "/Dests", "/Names", "/OpenAction", "/PageLabels", "/Threads",
                                  "/StructTreeRoot", "/MarkInfo", "/AA", "/PieceInfo"}) {
        pdf.getRoot().removeKey(key);
    }
}

}  // namespace

bool makePages(const PagesOrder& order, const std::string& output, const PagesProgress& progress, std::string* reason) {
    const std::shared_ptr<QPDF> pdf = openPDF(order.document, reason);
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
        replacePages(*pdf, pages);
        QPDFWriter writer(*pdf, output.c_str());
        writer.setPreserveEncryption(false);  // the filters have no password
        writer.setDecodeLevel(qpdf_dl_none);  // what is packed stays as it is
        writer.registerProgressReporter(std::make_shared<Reporter>(progress));
        writer.write();
        return true;
    } catch (const Ended&) {
        *reason = "was ended";
    } catch (const std::exception& error) {
        *reason = reasonOf(error);
    }
    return false;
}
