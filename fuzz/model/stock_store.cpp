// Any bytes as the user's own papers.
//
// Contract: a file that cannot be read is left as it is, but for one that has no papers at all. Papers that are added
// have names of their own, and can be found, replaced and taken away again.

#include "fuzz/fuzz_target.h"
#include "model/settings/preference_files.h"
#include "model/stock/stock_library.h"
#include "platform/files/temporary_files.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/CFURL.h"
#include "platform/foundation/text.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <vector>

namespace {

/// The user's folders, for as long as the process lives.
const std::string& usersFile() {
    static const WorkFolder folder;
    static const std::string path = [] {
        setenv("XDG_DATA_HOME", folder.path().c_str(), 1);
        setenv("XDG_CONFIG_HOME", folder.path().c_str(), 1);
        return filePath(CFRef<CFURLRef>::adopt(CopyPreferenceFileURL(CFSTR("com.tavro.print.papers.plist"))).get());
    }();
    return path;
}

std::vector<const Stock*> papersOf(const StockLibrary& library) {
    std::vector<const Stock*> papers;
    std::ranges::transform(library.papers, std::back_inserter(papers), [](const Stock& paper) { return &paper; });
    return papers;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::ofstream(usersFile(), std::ios::binary).write(reinterpret_cast<const char*>(data), std::streamsize(size));
    const StockLibrary before = StockLibraryIn(makeData(data, size).get());
    std::size_t added = 0;
    const StockLibraryChange change = AddStocks(before.papers, &added);
    // What could not be read is kept beside the new file.
    std::filesystem::remove(usersFile() + ".unreadable");
    if (change.fault != StockLibraryFault::none) {
        FUZZ_EXPECT(added == 0);
        return 0;
    }
    Stock paper;
    paper.setCustomName(CFSTR("Fuzz"));
    StoreStock(paper, nullptr, true);
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): papers are deleted below
    const StockLibrary after = UsersStockLibrary();
    std::set<std::u16string> names;
    for (const Stock& each : after.papers) {
        names.insert(FoldedStockText(each.customName()));
    }
    FUZZ_EXPECT(names.contains(FoldedStockText(CFSTR("Fuzz"))));
    FUZZ_EXPECT(!names.contains(FoldedStockText(CopyFreeStockName(CFSTR("Fuzz")).get())));
    FUZZ_EXPECT(StoreStock(paper, nullptr, false).fault == StockLibraryFault::nameTaken);
    FUZZ_EXPECT(DeleteStocks(papersOf(after)).fault == StockLibraryFault::none);
    FUZZ_EXPECT(UsersStockLibrary().papers.empty());
    return 0;
}
