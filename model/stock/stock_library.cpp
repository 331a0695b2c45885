#include "model/stock/stock_library.h"

#include "model/settings/preference_files.h"
#include "model/settings/record_ticket.h"
#include "platform/files/file_stamp.h"
#include "platform/files/url_access.h"
#include "platform/foundation/CFPropertyList.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/CFURL.h"
#include "platform/foundation/text.h"

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <string>

namespace {

#define kLibraryFile CFSTR("com.tavro.print.papers.plist")
#define kFormatKey CFSTR("Format")
#define kFormat CFSTR("com.tavro.print.papers")
#define kVersionKey CFSTR("Version")
#define kPapersKey CFSTR("Papers")

constexpr SInt32 kVersion = 1;

CFMutableArrayRef PapersIn(CFDictionaryRef root) {
    const void* const value = CFDictionaryGetValue(root, kPapersKey);
    return CFGetTypeID(value) == CFArrayGetTypeID() ? static_cast<CFMutableArrayRef>(const_cast<void*>(value))
                                                    : nullptr;
}

/// Null for what is no paper with a name.
CFDictionaryRef PaperAt(CFArrayRef papers, CFIndex index) {
    const void* const value = CFArrayGetValueAtIndex(papers, index);
    const auto* const paper =
        CFGetTypeID(value) == CFDictionaryGetTypeID() ? static_cast<CFDictionaryRef>(value) : nullptr;
    return CFStringGetLength(GetRecordString(paper, CFSTR("CustomName"))) > 0 ? paper : nullptr;
}

CFStringRef NameOf(CFDictionaryRef paper) {
    return GetRecordString(paper, CFSTR("CustomName"));
}

StockLibraryFault FaultOf(CFDictionaryRef root) {
    const CFStringRef format = GetRecordString(root, kFormatKey);
    SInt32 version = 0;
    if (format == nullptr || !CFEqual(format, kFormat) || !ReadTicketValue(root, kVersionKey, &version)) {
        return StockLibraryFault::otherFile;
    }
    return version > kVersion          ? StockLibraryFault::newer
           : PapersIn(root) == nullptr ? StockLibraryFault::otherFile
                                       : StockLibraryFault::none;
}

/// The papers of a root, in the order of their names in the user's language.
StockLibrary LibraryIn(CFDictionaryRef root) {
    StockLibrary library;
    library.fault = FaultOf(root);
    const CFArrayRef papers = library.fault == StockLibraryFault::otherFile ? nullptr : PapersIn(root);
    std::vector<std::pair<UInt32, CFDictionaryRef>> ranked;
    std::vector<CFStringRef> names;
    for (CFIndex i = 0; i < CFArrayGetCount(papers); ++i) {
        if (const CFDictionaryRef paper = PaperAt(papers, i)) {
            ranked.emplace_back(0, paper);
            names.push_back(NameOf(paper));
        }
    }
    std::vector<UInt32> ranks(names.size());
    CFStringGetLocalizedRanks(names.data(), static_cast<CFIndex>(names.size()), ranks.data());
    for (std::size_t i = 0; i < ranked.size(); ++i) {
        ranked[i].first = ranks[i];
    }
    std::ranges::stable_sort(ranked, {}, &std::pair<UInt32, CFDictionaryRef>::first);
    library.papers.reserve(ranked.size());
    for (const auto& [rank, paper] : ranked) {
        library.papers.push_back(StockWithDetails(paper));
    }
    return library;
}

std::string UsersFile() {
    return filePath(CFRef<CFURLRef>::adopt(CopyPreferenceFileURL(kLibraryFile)).get());
}

StockLibrary ReadUsersLibrary() {
    StockLibrary library;
    bool isParsed = false;
    library.error = ChangeStore(kLibraryFile, StoreUse::Existing, [&](CFMutableDictionaryRef root) {
        isParsed = true;
        library = LibraryIn(root);
        return false;
    });
    if (library.error != 0) {
        library.fault = StockLibraryFault::outOfReach;
    } else if (!isParsed && stampOf(UsersFile())) {
        library.fault = StockLibraryFault::unreadable;
    }
    return library;
}

void MakeLibrary(CFMutableDictionaryRef root) {
    CFDictionarySetValue(root, kFormatKey, kFormat);
    CFDictionarySetNumber(root, kVersionKey, &kVersion, kCFNumberSInt32Type);
    CFDictionarySetValue(
        root, kPapersKey,
        CFRef<CFMutableArrayRef>::adopt(CFArrayCreateMutable(nullptr, 0, &kCFTypeArrayCallBacks)).get());
}

/// Lets `apply` change the papers of the user's file. It tells whether it did; else nothing is written.
template <typename Apply>
StockLibraryChange Change(Apply apply) {
    StockLibraryChange result;
    const FolderLock lock = LockStores();
    if (!lock) {
        return {StockLibraryFault::notWritten, errno};
    }
    bool isAsked = false;
    result.error = ChangeStore(kLibraryFile, StoreUse::NewIfNone, [&](CFMutableDictionaryRef root) {
        isAsked = true;
        const bool isEmpty = CFDictionaryGetCount(root) == 0;
        result.fault = isEmpty ? StockLibraryFault::none : FaultOf(root);
        if (isEmpty) {
            MakeLibrary(root);
        }
        return result.fault == StockLibraryFault::none && apply(PapersIn(root), &result.fault);
    });
    if (result.error != 0) {
        result.fault = isAsked ? StockLibraryFault::notWritten : StockLibraryFault::outOfReach;
    }
    return result;
}

std::set<std::u16string> NamesIn(CFArrayRef papers) {
    std::set<std::u16string> names;
    for (CFIndex i = 0; i < CFArrayGetCount(papers); ++i) {
        if (const CFDictionaryRef paper = PaperAt(papers, i)) {
            names.insert(FoldedStockText(NameOf(paper)));
        }
    }
    return names;
}

CFRef<CFStringRef> NumberedName(CFStringRef name, int number) {
    return makeString(utf8Text(name) + " " + std::to_string(number));
}

/// The name, or that with the first number behind it that makes it free.
template <typename IsTaken>
CFRef<CFStringRef> FreeName(CFStringRef name, IsTaken isTaken) {
    auto free = CFRef<CFStringRef>::retain(name);
    for (int number = 2; isTaken(FoldedStockText(free.get())); ++number) {
        free = NumberedName(name, number);
    }
    return free;
}

}  // namespace

const StockLibrary& UsersStockLibrary() {
    static StockLibrary library;
    static std::optional<FileStamp> known;
    static std::string file;
    const std::string now = UsersFile();
    const auto stamp = stampOf(now);
    if (now != file || stamp != known || !stamp) {
        library = ReadUsersLibrary();
        file = now;
        known = stamp;
    }
    return library;
}

StockLibrary ReadStockLibrary(CFURLRef file) {
    StockLibrary library;
    CFDataRef bytes = nullptr;
    if (!CFURLCreateDataAndPropertiesFromResource(nullptr, file, &bytes, nullptr, nullptr, &library.error)) {
        library.fault = StockLibraryFault::outOfReach;
        return library;
    }
    return StockLibraryIn(CFRef<CFDataRef>::adopt(bytes).get());
}

StockLibrary StockLibraryIn(CFDataRef bytes) {
    const auto root =
        CFRef<CFTypeRef>::adopt(CFPropertyListCreateFromXMLData(nullptr, bytes, kCFPropertyListImmutable, nullptr));
    if (CFGetTypeID(root.get()) != CFDictionaryGetTypeID()) {
        StockLibrary library;
        library.fault = StockLibraryFault::unreadable;
        return library;
    }
    return LibraryIn(static_cast<CFDictionaryRef>(root.get()));
}

void UseNamedStock(const Stock& paper, JobContext context, Stock* stock) {
    const SInt32 size = stock->size();
    *stock = paper;
    if (context == JobContext::job) {
        stock->setSize(size);
    }
}

StockLibraryChange StoreStock(const Stock& paper, CFStringRef own, bool mayReplace) {
    return Change([&](CFMutableArrayRef papers, StockLibraryFault* fault) {
        const std::u16string name = FoldedStockText(paper.customName());
        CFIndex place = -1;
        CFIndex other = -1;
        for (CFIndex i = 0; i < CFArrayGetCount(papers); ++i) {
            const CFDictionaryRef stored = PaperAt(papers, i);
            if (stored != nullptr && own != nullptr && place < 0 && CFEqual(NameOf(stored), own)) {
                place = i;
            } else if (stored != nullptr && FoldedStockText(NameOf(stored)) == name) {
                other = i;
            }
        }
        if (other >= 0 && !mayReplace) {
            *fault = StockLibraryFault::nameTaken;
            return false;
        }
        // The later one first, so that the other's place stays.
        for (const CFIndex gone : {std::max(place, other), std::min(place, other)}) {
            if (gone >= 0) {
                CFArrayRemoveValueAtIndex(papers, gone);
            }
        }
        CFArrayAppendValue(papers, paper.asTicket().get());
        return true;
    });
}

StockLibraryChange DeleteStocks(std::span<const Stock* const> papers) {
    std::set<std::string> names;
    std::ranges::transform(papers, std::inserter(names, names.end()),
                           [](const Stock* paper) { return utf8Text(paper->customName()); });
    return Change([&](CFMutableArrayRef stored, StockLibraryFault*) {
        const CFIndex before = CFArrayGetCount(stored);
        for (CFIndex i = before; i-- > 0;) {
            const CFDictionaryRef paper = PaperAt(stored, i);
            if (paper != nullptr && names.contains(utf8Text(NameOf(paper)))) {
                CFArrayRemoveValueAtIndex(stored, i);
            }
        }
        return CFArrayGetCount(stored) < before;
    });
}

StockLibraryChange AddStocks(std::span<const Stock> papers, std::size_t* added) {
    *added = 0;
    return Change([&](CFMutableArrayRef stored, StockLibraryFault*) {
        std::set<std::u16string> names = NamesIn(stored);
        std::multimap<std::u16string, Stock> known;
        for (CFIndex i = 0; i < CFArrayGetCount(stored); ++i) {
            if (const CFDictionaryRef paper = PaperAt(stored, i)) {
                known.emplace(FoldedStockText(NameOf(paper)), StockWithDetails(paper));
            }
        }
        for (const Stock& paper : papers) {
            const std::u16string name = FoldedStockText(paper.customName());
            const auto [first, last] = known.equal_range(name);
            if (std::any_of(first, last, [&](const auto& row) { return row.second == paper; })) {
                continue;
            }
            Stock own(paper);
            own.setCustomName(
                FreeName(paper.customName(), [&](const std::u16string& taken) { return names.contains(taken); }).get());
            names.insert(FoldedStockText(own.customName()));
            CFArrayAppendValue(stored, own.asTicket().get());
            ++*added;
        }
        return *added > 0;
    });
}

CFRef<CFDataRef> CopyStockLibraryData(std::span<const Stock* const> papers) {
    const auto root = CreateRecordDictionary();
    MakeLibrary(root.get());
    for (const Stock* const paper : papers) {
        CFArrayAppendValue(PapersIn(root.get()), paper->asTicket().get());
    }
    return CFRef<CFDataRef>::adopt(CFPropertyListCreateXMLData(nullptr, root.get()));
}

StockLibraryChange WriteStockLibrary(CFURLRef file, std::span<const Stock* const> papers) {
    const auto data = CopyStockLibraryData(papers);
    StockLibraryChange result{StockLibraryFault::notWritten, EINVAL};
    if (data && CFURLWriteDataAndPropertiesToResource(file, data.get(), nullptr, &result.error)) {
        result = {};
    }
    return result;
}

CFRef<CFStringRef> CopyFreeStockName(CFStringRef name) {
    std::set<std::u16string> names;
    for (const Stock& paper : UsersStockLibrary().papers) {
        names.insert(FoldedStockText(paper.customName()));
    }
    return FreeName(name, [&](const std::u16string& taken) { return names.contains(taken); });
}

std::u16string FoldedStockText(CFStringRef text) {
    const auto folded = CFRef<CFMutableStringRef>::adopt(CFStringCreateMutableCopy(nullptr, 0, text));
    CFStringFold(folded.get(), kCFCompareCaseInsensitive | kCFCompareDiacriticInsensitive, nullptr);
    std::u16string characters(static_cast<std::size_t>(CFStringGetLength(folded.get())), u'\0');
    CFStringGetCharacters(folded.get(), {0, CFStringGetLength(folded.get())}, characters.data());
    return characters;
}
