// The window of the paper library: opening it until its first frame, with a file that was just changed and with one
// that is known, and each key of a search, and each sort by a column, until the rows are painted.
//
// usage: bench_stock_library PPD BUNDLE

#include "model/stock/stock_library.h"
#include "bench/side_by_side.h"
#include "model/settings/plugin_state.h"
#include "model/settings/ppd_ui_dictionary.h"
#include "model/stock_dialogs/stock_library_dialog.h"
#include "platform/foundation/CFBundle.h"
#include "platform/foundation/text.h"
#include "platform/printing/PMSession.h"
#include "platform/toolbox/Automation.h"
#include "platform/toolbox/Windows.h"

#include <QApplication>
#include <QKeyEvent>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeView>
#include <string>

namespace {

/// Papers of a print shop: a few kinds, many weights, colors and names.
std::vector<Stock> makePapers(int count) {
    constexpr SInt32 kTypes[] = {kStockTypeStandard, kStockTypeCardStock, kStockTypeHeavyGlossy, kStockTypeTabStock};
    constexpr SInt32 kSizes[] = {1, 3, 4, 5};
    std::vector<Stock> papers;
    for (int i = 0; i < count; ++i) {
        Stock paper;
        paper.setSize(kSizes[i % 4]);
        paper.setColor(1 + i % 5);
        paper.setType(kTypes[i / 4 % 4]);
        paper.setWeight(60 + 10 * (i % 30));
        paper.setSidesCoated(1 + i % 3);
        paper.setFinish(1 + i % 5);
        paper.setCustomName(makeString("Paper " + std::to_string(i * 7919 % 100003)).get());
        paper.setDescription(makeString("For customer " + std::to_string(i % 97)).get());
        papers.push_back(paper);
    }
    return papers;
}

void store(int count) {
    std::size_t added = 0;
    std::vector<const Stock*> old;
    const StockLibrary before = UsersStockLibrary();
    for (const Stock& paper : before.papers) {
        old.push_back(&paper);
    }
    DeleteStocks(old);
    AddStocks(makePapers(count), &added);
}

/// Paints all that waits for it, as the event loop would.
void paint() {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void report(const char* what, const std::vector<double>& times) {
    std::printf("  %-34s median %8.2f ms   longest %8.2f ms\n", what, bench::medianOf(times) / 1000,
                *std::ranges::max_element(times) / 1000);
}

/// Runs the window until `use` has used it.
template <typename Use>
void run(CFBundleRef bundle, Use use) {
    QTimer::singleShot(0, qApp, [&] {
        paint();
        use();
        QuitAppModalLoopForWindow(FrontNonFloatingWindow());
    });
    Stock stock;
    SInt16 result = 0;
    RunModalStockLibrary(bundle, JobContext::cover, &stock, &result);
}

void measure(CFBundleRef bundle, int count, int rounds) {
    std::printf("%d papers\n", count);
    std::vector<double> changing;
    std::vector<double> opening;
    std::vector<double> opened;
    std::vector<double> firstKeys;
    std::vector<double> keys;
    std::vector<double> firstSorts;
    std::vector<double> sorts;
    store(count);
    for (int round = 0; round < rounds; ++round) {
        Stock changed = UsersStockLibrary().papers.front();
        changed.setWeight(60 + round);
        changing.push_back(bench::microseconds([&] { StoreStock(changed, changed.customName(), true); }));
        for (std::vector<double>* const times : {&opening, &opened}) {
            const auto start = bench::Clock::now();
            run(bundle, [&] {
                times->push_back(std::chrono::duration<double, std::micro>(bench::Clock::now() - start).count());
            });
        }
        run(bundle, [&] {
            QWidget* const field = QApplication::focusWidget();
            auto* const list = QApplication::activeModalWidget()->findChild<QTreeView*>();
            for (int i = 0; const QChar letter : QStringLiteral("gloss 12")) {
                const double time = bench::microseconds([&] {
                    QKeyEvent press(QEvent::KeyPress, letter.unicode(), Qt::NoModifier, letter);
                    QCoreApplication::sendEvent(field, &press);
                    paint();
                    list->viewport()->repaint();
                });
                (i++ == 0 ? firstKeys : keys).push_back(time);
            }
        });
        run(bundle, [&] {
            auto* const list = QApplication::activeModalWidget()->findChild<QTreeView*>();
            for (int i = 0; i < 2 * list->model()->columnCount(); ++i) {
                QKeyEvent press(QEvent::KeyPress, Qt::Key_1 + i / 2, Qt::ControlModifier);
                (i % 2 == 0 ? firstSorts : sorts).push_back(bench::microseconds([&] {
                    QCoreApplication::sendEvent(list, &press);
                    list->viewport()->repaint();
                }));
            }
        });
    }
    report("one paper stored", changing);
    report("opened, the file has changed", opening);
    report("opened, the file is known", opened);
    report("first key of a search", firstKeys);
    report("each other key", keys);
    report("first sort by a column", firstSorts);
    report("the other way round", sorts);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s PPD BUNDLE\n", argv[0]);
        return 2;
    }
    const QTemporaryDir folder;
    qputenv("XDG_DATA_HOME", folder.path().toUtf8());
    int count = 1;
    ToolboxInitialize(&count, argv, true);
    const auto bundle = CFRef<CFBundleRef>::adopt(CFBundleCreate(nullptr, makeFileURL(argv[2]).get()));
    PMPrinter printer = nullptr;
    PMTicketRef info = 0;
    PPDContext ppd = nullptr;
    if (!bundle || PMPrinterCreateFromPPDFile(makeFileURL(argv[1]).get(), &printer) != noErr ||
        PMTicketCreate(nullptr, kPDE_PMPrinterInfoKey, &info) != noErr ||
        PMPrinterWriteInfoTicket(printer, nullptr, info) != noErr ||
        ppdOpenCompiledPPDFromTicket(info, &ppd) != noErr || PPDCreateGlobalUIDictionary(ppd) != noErr) {
        std::fprintf(stderr, "%s or %s cannot be used\n", argv[1], argv[2]);
        return 1;
    }
    SetPDEBundle(bundle.get());
    SetShowsStockDetails(true);
    measure(bundle.get(), 1000, 31);
    measure(bundle.get(), 100000, 3);
    PPDReleaseGlobalUIDictionary();
    ppdCloseCompiledPPDFromTicket(ppd);
    PMTicketReleaseAndClear(&info);
    PMPrinterRelease(printer);
    return 0;
}
