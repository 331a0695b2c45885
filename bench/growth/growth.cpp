// How each list that a user can make long grows: time and memory at 10, 1,000 and 100,000 rows, and what power of the
// number of rows each operation follows from the middle to the most. Fails when one grows worse than n log n. Each list
// and size has a process of its own, so that none meets what another has left.
//
// usage: bench_growth PPD PLUGIN HOST_BUNDLE [LIST...]

#include "bench/side_by_side.h"
#include "host/settings/conflicts.h"
#include "host/settings/presets.h"
#include "host/settings/print_session.h"
#include "host/settings/summary.h"
#include "jobtypes/records/fax_recipient_list.h"
#include "model/records/special_page_list.h"
#include "model/settings/preference_files.h"
#include "model/stock/stock_columns.h"
#include "model/stock/stock_library.h"
#include "model/stock/stock_search.h"
#include "platform/foundation/CFBundle.h"
#include "platform/foundation/text.h"
#include "watermark/records/watermark_changes.h"
#include "watermark/records/watermark_list.h"
#include "watermark/records/watermark_storage.h"

#include <cups/ppd.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <array>
#include <cmath>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <functional>
#include <numeric>
#include <sstream>

// The functions for PPDs are deprecated and have no others in their place.
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"

namespace {

using Sizes = std::array<int, 3>;
constexpr Sizes kSizes{10, 1000, 100000};
constexpr double kTolerance = 2;
constexpr const char* kPeer = "open, libcups alone";  // told, and not judged
constexpr double kQuick = 5000;                       // microseconds that are too few to tell by

std::string samplePPD;
CFRef<CFBundleRef> plugin;
CFRef<CFBundleRef> program;

/// Where a child tells its times; the parent reads the lines "operation, tab, microseconds".
std::FILE* told = nullptr;

/// The processor's time, which other programs on the machine do not change.
template <typename Work>
double microsecondsOf(Work&& work) {
    const auto now = [] {
        timespec time{};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
        return double(time.tv_sec) * 1e6 + double(time.tv_nsec) / 1e3;
    };
    const double start = now();
    work();
    return now() - start;
}

void tell(const char* operation, double microseconds) {
    std::fprintf(told, "%s\t%f\n", operation, microseconds);
}

template <typename Work>
void step(const char* operation, Work&& work) {
    tell(operation, microsecondsOf(work));
}

CFRef<CFStringRef> numbered(const char* name, int number) {
    return makeString(name + std::to_string(number * 7919LL % 1000003));
}

void growPresets(int count) {
    const KeptSettings presets = namedPresets();
    const JobSettings settings = PrintSession(*openPPD(samplePPD), {}, nullptr, "document").copySettings();
    (void)presets.write("First", settings);
    // Files that somebody has put there: the program's own way waits for the disk at each.
    const char* const home = std::getenv("HOME");
    for (const auto& each : std::filesystem::recursive_directory_iterator(home)) {
        if (!each.is_regular_file()) {
            continue;
        }
        std::ifstream in(each.path());
        const std::string text{std::istreambuf_iterator<char>(in), {}};
        const std::size_t place = text.find("First");
        if (place == std::string::npos) {
            continue;
        }
        for (int i = 1; i < count; ++i) {
            const std::string name = "Preset " + std::to_string(i);
            std::ofstream out(each.path().parent_path() / (name + each.path().extension().string()));
            out << text.substr(0, place) << name << text.substr(place + 5);
        }
        break;
    }
    KeptSettings::Names names;
    step("list", [&] { names = presets.list(); });
    if (names.names.size() != std::size_t(count)) {
        std::fprintf(stderr, "%zu presets of %d\n", names.names.size(), count);
        _exit(1);
    }
    step("read one", [&] { (void)presets.read("Preset 5"); });
    step("save one", [&] { (void)presets.write("Another", settings); });
    step("rename one", [&] { (void)presets.rename("Another", "Yet another"); });
}

void growWatermarks(int count) {
    const auto list = CFRef<CFMutableArrayRef>::adopt(CFArrayCreateMutable(nullptr, 0, &kCFTypeArrayCallBacks));
    WatermarkRecord record = {};
    record.kind = kTextWatermark;
    step("save all at once", [&] {
        ChangeStore(kWatermarkStore, StoreUse::NewIfNone, [&](CFMutableDictionaryRef root) {
            for (int i = 0; i < count; ++i) {
                const auto name = numbered("Watermark ", i);
                CFStringGetCString(name.get(), record.text, sizeof record.text, kCFStringEncodingUTF8);
                CFDictionarySetValue(root, name.get(), CreateWatermarkDictionary(record).get());
                CFArrayAppendValue(list.get(), name.get());
            }
            CFDictionarySetValue(root, kWatermarkListKey, list.get());
            return true;
        });
    });
    step("list", [&] { (void)LoadListOfWatermarks(plugin.get()); });
    std::snprintf(record.text, sizeof record.text, "Another");
    step("add one", [&] { StoreWatermark(record, nullptr, false, list.get()); });
    step("read one", [&] { loadWatermarkData(kWatermarkStore, CFSTR("Another"), &record); });
    step("delete one", [&] { DeleteWatermark(CFSTR("Another"), list.get()); });
}

void growRecipients(int count) {
    FaxRecipientList list;
    step("add all", [&] {
        for (int i = 0; i < count; ++i) {
            const auto number = numbered("", i);
            list.append(FaxRecipientOwner(new FaxRecipient(number.get(), CFSTR("Last"), number.get())).get());
        }
    });
    const auto number = numbered("none", 1);
    const FaxRecipientOwner one(new FaxRecipient(number.get(), number.get(), number.get()));
    step("look for one", [&] { (void)list.containsRecipient(one.get()); });
    CFRef<CFArrayRef> ticket;
    step("to the ticket", [&] { ticket = list.toTicket(); });
    step("from the ticket", [&] { const FaxRecipientList back(ticket.get()); });
    step("remove one", [&] { list.remove(list.recipientAtIndex(list.count() / 2)); });
}

void growStocks(int count) {
    std::vector<Stock> papers;
    for (int i = 0; i < count; ++i) {
        Stock paper;
        paper.setColor(1 + i % 5);
        paper.setWeight(60 + 10 * (i % 30));
        paper.setCustomName(numbered("Paper ", i).get());
        papers.push_back(paper);
    }
    std::size_t added = 0;
    step("import all", [&] { AddStocks(papers, &added); });
    Stock another = papers.front();
    another.setCustomName(CFSTR("Another"));
    step("add one", [&] { StoreStock(another, nullptr, false); });
    step("open", [&] { (void)UsersStockLibrary().papers.size(); });
    const std::vector<Stock>& library = UsersStockLibrary().papers;
    StockSearch search(plugin.get(), library);
    step("first search", [&] { search.find(CFSTR("12")); });
    step("another search", [&] { search.find(CFSTR("paper 123")); });
    for (const StockColumn column : {StockColumn::name, StockColumn::weight}) {
        StockOrder order(plugin.get(), library);
        std::vector<std::size_t> places(library.size());
        std::iota(places.begin(), places.end(), 0);
        step(column == StockColumn::name ? "sort by name" : "sort by weight",
             [&] { std::ranges::sort(places, [&](auto a, auto b) { return order.comesBefore(a, b, column); }); });
    }
    const Stock* const one = &library[library.size() / 2];
    step("delete one", [&] { DeleteStocks({&one, 1}); });
}

template <typename List, typename Page>
void growSpecialPages(int count) {
    const auto pageAt = [](int number) {
        auto page = std::make_unique<Page>();
        page->setStartPage(number);
        if constexpr (std::is_same_v<Page, ExceptionPage>) {
            page->setEndPage(number + 5);
        }
        return page;
    };
    SpecialPages all;
    for (int i = 0; i < count; ++i) {
        all.push_back(pageAt(1 + int(i * 7919LL % count) * 10));
    }
    List list;
    step("add all", [&] { list.add(all); });
    SpecialPages one;
    one.push_back(pageAt(count / 2 * 10 + 3));
    step("add one", [&] { list.add(one); });
    CFRef<CFMutableArrayRef> ticket;
    step("to the ticket", [&] { ticket = list.asTicket(); });
    List back;
    step("from the ticket", [&] { back.setFromTicket(ticket.get()); });
    step("remove one", [&] { list.remove(list.pageAtIndex(list.count() / 2)); });
}

/// A session of the sample's PPD with so many more options of so many choices each, all of them chosen.
void growPPD(int options, int choices) {
    std::ifstream in(samplePPD);
    const std::string path = std::string(std::getenv("HOME")) + "/large.ppd";
    std::ofstream out(path);
    bool isDone = false;
    for (std::string line; std::getline(in, line); out << line << '\n') {
        if (isDone || !line.starts_with("*OpenGroup")) {
            continue;
        }
        isDone = true;
        for (int k = 0; k < options; ++k) {
            out << "*OpenUI *TVX" << k << "/Extra " << k << ": PickOne\n*DefaultTVX" << k << ": C0\n";
            for (int c = 0; c < choices; ++c) {
                out << "*TVX" << k << " C" << c << "/Choice " << c << ": \"<<>>pop\"\n";
            }
            out << "*CloseUI: *TVX" << k << '\n';
        }
    }
    out.close();
    Result<Printer> printer = openPPD(path);
    if (!printer) {
        _exit(1);
    }
    *printer = Printer();  // read again, for the time
    const double all = microsecondsOf([&] { printer = openPPD(path); });
    // libcups looks for each option among all of its group, which is not ours to mend.
    const double libcups = microsecondsOf([&] {
        ppd_file_t* const ppd = ppdOpenFile(path.c_str());
        ppdMarkDefaults(ppd);
        ppdClose(ppd);
    });
    tell(kPeer, libcups);
    tell("open, what is ours", std::max(all - libcups, 1.0));
    const auto pairs = CFRef<CFMutableDictionaryRef>::adopt(
        CFDictionaryCreateMutable(nullptr, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
    const CFRef<CFStringRef> last = makeString("C" + std::to_string(choices - 1));
    for (int k = 0; k < options; ++k) {
        CFDictionarySetValue(pairs.get(), makeString("TVX" + std::to_string(k)).get(), last.get());
    }
    const auto items = CFRef<CFMutableDictionaryRef>::adopt(
        CFDictionaryCreateMutable(nullptr, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
    CFDictionarySetValue(items.get(), CFSTR("PPDDict"), pairs.get());
    JobSettings settings;
    settings.printSettings = CFRef<CFDictionaryRef>::retain(items.get());
    std::optional<PrintSession> session;
    step("begin a session", [&] { session.emplace(*printer, settings, nullptr, "document"); });
    if (session->choice(CFSTR("TVX0")) != "C" + std::to_string(choices - 1)) {
        std::fprintf(stderr, "the session has lost a choice\n");
        _exit(1);
    }
    step("check", [&] { examineConflicts(*session, program.get(), {}, 24); });
    step("summarize", [&] { summarize(*session, 24, program.get()); });
}

struct List {
    const char* name;
    std::function<void(int)> grow;
    Sizes sizes = kSizes;
};

// Presets are files, which the file system makes slowly; of a PPD no more than 8 MB are read.
const List kLists[] = {
    {"presets", growPresets, {10, 1000, 20000}},
    {"watermarks", growWatermarks},
    {"recipients", growRecipients},
    {"stocks", growStocks},
    {"inserts", growSpecialPages<InsertList, Insert>},
    {"exceptions", growSpecialPages<ExceptionPageList, ExceptionPage>},
    {"options", [](int count) { growPPD(count, 2); }, {10, 1000, 20000}},
    {"choices", [](int count) { growPPD(1, count); }},
};

struct Run {
    std::vector<std::pair<std::string, double>> times;
    long kilobytes = 0;  // at the most
    bool isWhole = false;
};

Run runAt(const List& list, int count) {
    const QTemporaryDir folder;
    int pipes[2];
    if (pipe(pipes) != 0) {
        return {};
    }
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        close(pipes[0]);
        told = fdopen(pipes[1], "w");
        for (const char* const name : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME"}) {
            setenv(name, folder.path().toUtf8().constData(), 1);
        }
        list.grow(count);
        std::fflush(told);
        _exit(0);
    }
    close(pipes[1]);
    Run run;
    std::FILE* const lines = fdopen(pipes[0], "r");
    std::array<char, 256> line{};
    while (std::fgets(line.data(), line.size(), lines) != nullptr) {
        const std::string text = line.data();
        run.times.emplace_back(text.substr(0, text.find('\t')), std::stod(text.substr(text.find('\t') + 1)));
    }
    std::fclose(lines);
    int status = 0;
    rusage used{};
    wait4(child, &status, 0, &used);
    run.kilobytes = used.ru_maxrss;
    run.isWhole = status == 0;
    return run;
}

bool measure(const List& list) {
    std::array<Run, 3> runs;
    for (std::size_t i = 0; i < runs.size(); ++i) {
        runs[i] = runAt(list, list.sizes[i]);
        if (!runs[i].isWhole) {
            std::printf("%s: no figures with %d\n", list.name, list.sizes[i]);
            return false;
        }
    }
    const double rows = double(list.sizes[2]) / list.sizes[1];
    const double most = rows * std::log(list.sizes[2]) / std::log(list.sizes[1]) * kTolerance;
    bool isGood = true;
    std::printf("%s of %d, %d and %d; at the most %.1f, %.1f and %.1f MB\n", list.name, list.sizes[0], list.sizes[1],
                list.sizes[2], double(runs[0].kilobytes) / 1024, double(runs[1].kilobytes) / 1024,
                double(runs[2].kilobytes) / 1024);
    for (std::size_t i = 0; i < runs[0].times.size(); ++i) {
        const double middle = runs[1].times[i].second;
        const double last = runs[2].times[i].second;
        const bool isWorse =
            runs[0].times[i].first != kPeer && last > kQuick && last > most * std::max(middle, kQuick / most);
        std::printf("  %-20s %10.2f %10.2f %10.2f ms   n^%.2f%s\n", runs[0].times[i].first.c_str(),
                    runs[0].times[i].second / 1000, middle / 1000, last / 1000,
                    std::log(last / middle) / std::log(rows), isWorse ? "   worse than n log n" : "");
        isGood &= !isWorse;
    }
    return isGood;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 4) {
        std::fprintf(stderr, "usage: %s PPD PLUGIN HOST_BUNDLE [LIST...]\n", argv[0]);
        return 2;
    }
    samplePPD = argv[1];
    plugin = CFRef<CFBundleRef>::adopt(CFBundleCreate(nullptr, makeFileURL(argv[2]).get()));
    program = CFRef<CFBundleRef>::adopt(CFBundleCreate(nullptr, makeFileURL(argv[3]).get()));
    const std::vector<std::string> asked(argv + 4, argv + argc);
    bool isGood = true;
    for (const List& list : kLists) {
        if (asked.empty() || std::ranges::find(asked, list.name) != asked.end()) {
            isGood &= measure(list);
        }
    }
    return isGood ? 0 : 1;
}
