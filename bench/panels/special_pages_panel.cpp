// The list of the Special Pages panel with 10,000 rows: filled, all selected, scrolled by a page, and one exception
// more.
//
// usage: bench_special_pages_panel BUNDLE

#include "bench/side_by_side.h"
#include "panels/special_pages/special_pages_context.h"
#include "panels/special_pages/special_pages_list.h"
#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/CFURL.h"
#include "platform/toolbox/Automation.h"
#include "platform/toolbox/Windows.h"
#include "ui/nib_window.h"

#include <QApplication>

namespace {

constexpr SInt32 kRows = 10000;

SpecialPages exceptions(SInt32 count) {
    SpecialPages pages;
    for (SInt32 i = 0; i < count; ++i) {
        auto page = std::make_unique<ExceptionPage>();
        page->setStartPage(10 * i + 1);
        page->setEndPage(10 * i + 5);
        page->setPlex(1);
        page->stock().setColor(i % 5 + 1);
        pages.push_back(std::move(page));
    }
    return pages;
}

/// Layout and paint what is pending, as the event loop does.
void paint() {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

template <typename Prepare, typename Act>
void measure(const char* name, Prepare prepare, Act act) {
    std::vector<double> times;
    for (int round = 0; round < 11; ++round) {
        prepare();
        paint();
        times.push_back(bench::microseconds([&] {
            act(round);
            paint();
        }));
    }
    std::printf("%-40s %8.2f ms\n", name, bench::medianOf(times) / 1000);
}

}  // namespace

int main(int argc, char** argv) {
    ToolboxInitialize(&argc, argv, true);
    if (argc != 2) {
        std::fprintf(stderr, "usage: bench_special_pages_panel BUNDLE\n");
        return 2;
    }
    const auto path = CFRef<CFStringRef>::adopt(CFStringCreateWithCString(nullptr, argv[1], kCFStringEncodingUTF8));
    const auto url =
        CFRef<CFURLRef>::adopt(CFURLCreateWithFileSystemPath(nullptr, path.get(), kCFURLPOSIXPathStyle, true));
    const auto bundle = CFRef<CFBundleRef>::adopt(CFBundleCreate(nullptr, url.get()));
    WindowFromNib window;
    if (!bundle || window.load(bundle.get(), CFSTR("SpecialPages"), CFSTR("SpecialPages")) != noErr) {
        std::fprintf(stderr, "%s: no such bundle\n", argv[1]);
        return 4;
    }
    _SpecialPagesContext context{};
    gSpecialPages = &context;
    context.bundle = bundle.get();
    const ControlID id{kSpecialPagesSignature, 1000};
    GetControlByID(window.get(), &id, &context.list);
    ConfigureSpecialPagesListAndInstallCallbacks(context.list,
                                                 [](ControlRef, DataBrowserItemID, DataBrowserItemNotification) {});
    ShowWindow(window.get());

    const SpecialPages many = exceptions(kRows);
    const auto fill = [&] {
        context.records.exceptions.clear();
        context.records.exceptions.add(many);
        UpdateSpecialPagesSummary();
    };
    fill();
    measure(
        "fill 10,000 rows", [] {}, [](int) { UpdateSpecialPagesSummary(); });
    std::vector<DataBrowserItemID> rows(kRows);
    GetDataBrowserItems(context.list, kDataBrowserNoItem, false, kDataBrowserItemAnyState, rows.size(), rows.data());
    measure(
        "select all", [&] { SetDataBrowserSelectedItems(context.list, 0, nullptr, kDataBrowserItemsAssign); },
        [&](int) { SetDataBrowserSelectedItems(context.list, rows.size(), rows.data(), kDataBrowserItemsAssign); });
    measure(
        "scroll by a page", [] {},
        [&](int round) { SetDataBrowserScrollPosition(context.list, static_cast<UInt32>(300 * round), 0); });
    SpecialPages one;
    one.push_back(std::make_unique<ExceptionPage>());
    const auto next = [&] {
        fill();
        one.front()->setStartPage(50003);
        static_cast<ExceptionPage&>(*one.front()).setEndPage(50012);
    };
    std::vector<double> times;
    for (int round = 0; round < 11; ++round) {
        next();
        times.push_back(bench::microseconds([&] { context.records.exceptions.add(one); }));
        UpdateSpecialPagesSummary();
    }
    std::printf("%-40s %8.2f ms\n", "add one exception to the list alone", bench::medianOf(times) / 1000);
    measure("add one exception, and refill", next, [&](int) {
        context.records.exceptions.add(one);
        UpdateSpecialPagesSummary();
    });
    HideWindow(window.get());
    gSpecialPages = nullptr;
    return 0;
}
