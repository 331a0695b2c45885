#include "reliability/stores.h"

#include "host/settings/presets.h"
#include "model/settings/preference_files.h"
#include "model/stock/stock_library.h"
#include "platform/contacts/AddressBook.h"
#include "platform/printing/saved_options.h"
#include "tests/support/cf_values.h"
#include "watermark/records/watermark_changes.h"
#include "watermark/records/watermark_storage.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace {

constexpr std::size_t kContentBytes = 10'000;

/// The number and its digits over and over, so that a part of it is not the whole: "7 7777…".
std::string textOf(int number) {
    const std::string digits = std::to_string(number);
    std::string text = digits + " ";
    while (text.size() < kContentBytes) {
        text += digits;
    }
    return text;
}

int numberOf(const std::string& text) {
    const int number = std::atoi(text.c_str());
    return text == textOf(number) ? number : kDamaged;
}

CFRef<CFMutableDictionaryRef> dictionaryOf(int number) {
    auto dictionary = makeCFDictionary();
    CFDictionarySetValue(dictionary.get(), CFSTR("Number"), makeCFString(textOf(number)).get());
    return dictionary;
}

int numberIn(CFDictionaryRef dictionary) {
    const CFTypeRef value = dictionary == nullptr ? nullptr : CFDictionaryGetValue(dictionary, CFSTR("Number"));
    return CFGetTypeID(value) == CFStringGetTypeID() ? numberOf(textOfCF(static_cast<CFStringRef>(value))) : kDamaged;
}

// A preset that is saved again under its name.

constexpr const char* kPreset = "Booklet";

bool savePreset(const std::string& name, int number) {
    JobSettings settings;
    settings.printSettings = CFRef<CFDictionaryRef>::retain(dictionaryOf(number).get());
    return !namedPresets().write(name, settings);
}

int readPreset(const std::string& name) {
    auto settings = namedPresets().read(name);
    return settings ? numberIn(settings->printSettings.get()) : kDamaged;
}

bool savePresetAgain(int number) {
    return savePreset(kPreset, number);
}

int readPresetAgain() {
    return namedPresets().contains(kPreset) ? readPreset(kPreset) : 0;
}

// A preset whose name is the number. Its content stays: a renaming must not lose it, and may leave both names behind.

constexpr int kRenamed = 1;

std::vector<int> namesOfRenamed() {
    std::vector<int> numbers;
    for (const std::string& name : namedPresets().list().names) {
        if (name != kPreset) {
            numbers.push_back(std::atoi(name.c_str()));
        }
    }
    std::ranges::sort(numbers);
    return numbers;
}

bool renamePreset(int number) {
    const std::string name = std::to_string(number);
    if (number == 1) {
        return savePreset(name, kRenamed);
    }
    const std::vector<int> before = namesOfRenamed();
    return !before.empty() && !namedPresets().rename(std::to_string(before.front()), name);
}

int readRenamedPreset() {
    const std::vector<int> numbers = namesOfRenamed();
    for (const int number : numbers) {
        if (readPreset(std::to_string(number)) != kRenamed) {
            return kDamaged;
        }
    }
    return numbers.empty() ? 0 : numbers.front();
}

// A watermark, with a font beside it that each save copies.

const std::string& fontBytes() {
    static const std::string bytes(20'000, 'f');
    return bytes;
}

bool saveWatermark(int number) {
    WatermarkRecord record{};
    record.kind = kTextWatermark;
    std::snprintf(record.text, sizeof record.text, "Draft");
    record.scale = number;
    const auto shown = makeCFArray();
    const bool saved = StoreWatermark(record, CFSTR("Draft"), true, shown.get()).fault == ChangeFault::none;
    if (number == 1) {
        storeFontData(kWatermarkStore, CFSTR("DejaVuSans"), makeCFData(fontBytes()).get());
    }
    return saved;
}

int readWatermark() {
    WatermarkRecord record{};
    if (!loadWatermarkData(kWatermarkStore, CFSTR("Draft"), &record)) {
        const auto url = CFRef<CFURLRef>::adopt(CopyPreferenceFileURL(kWatermarkStore));
        return std::filesystem::exists(pathOfCF(url.get())) ? kDamaged : 0;
    }
    const auto font = CFRef<CFMutableDataRef>::adopt(CFDataCreateMutable(nullptr, 0));
    loadFontData(kWatermarkStore, CFSTR("DejaVuSans"), font.get());
    return static_cast<std::size_t>(CFDataGetLength(font.get())) >= fontBytes().size() ? record.scale : kDamaged;
}

// A paper.

bool savePaper(int number) {
    Stock stock;
    stock.setSize(4);
    stock.setCustomName(CFSTR("Card"));
    stock.setComment(makeCFString(textOf(number)).get());
    return StoreStock(stock, CFSTR("Card"), true).fault == StockLibraryFault::none;
}

int readPaper() {
    const StockLibrary& library = UsersStockLibrary();
    if (library.fault != StockLibraryFault::none || library.papers.size() > 1) {
        return kDamaged;
    }
    return library.papers.empty() ? 0 : numberOf(textOfCF(library.papers.front().comment()));
}

// Preferences.

CFStringRef notesFile() {
    return CFSTR("com.tavro.print.jobnotes.plist");
}

bool savePreferences(int number) {
    return WriteUserPreferences(notesFile(), dictionaryOf(number).get()) != 0;
}

int readPreferences() {
    const auto preferences = CFRef<CFMutableDictionaryRef>::adopt(CopyUserPreferences(notesFile()));
    return preferences ? numberIn(preferences.get()) : 0;
}

// A person of the address book.

/// The only one.
CFRef<ABRecordRef> person() {
    const auto people = CFRef<CFArrayRef>::adopt(ABCopyArrayOfAllPeople(ABGetSharedAddressBook()));
    return people && CFArrayGetCount(people.get()) == 1
               ? CFRef<ABRecordRef>::retain(
                     static_cast<ABRecordRef>(const_cast<void*>(CFArrayGetValueAtIndex(people.get(), 0))))
               : CFRef<ABRecordRef>();
}

bool savePerson(int number) {
    const bool isNew = number == 1;
    const auto one = isNew ? CFRef<ABRecordRef>::adopt(ABPersonCreate()) : person();
    return one && ABRecordSetValue(one.get(), kABOrganizationProperty, makeCFString(textOf(number)).get()) != 0 &&
           (!isNew || ABAddRecord(ABGetSharedAddressBook(), one.get()) != 0) && ABSave(ABGetSharedAddressBook()) != 0;
}

int readPerson() {
    const auto people = CFRef<CFArrayRef>::adopt(ABCopyArrayOfAllPeople(ABGetSharedAddressBook()));
    if (people && CFArrayGetCount(people.get()) == 0) {
        return 0;
    }
    const auto one = person();
    const auto value = CFRef<CFTypeRef>::adopt(one ? ABRecordCopyValue(one.get(), kABOrganizationProperty) : nullptr);
    return value ? numberOf(textOfCF(static_cast<CFStringRef>(value.get()))) : kDamaged;
}

// The saved options of a queue.

constexpr const char* kOptionsBegin = "Dest office note=";

bool saveOptions(int number) {
    return changeUserOptions("office", [&](const std::string&) { return kOptionsBegin + textOf(number) + "\n"; }) ==
           noErr;
}

int readOptions() {
    const auto text = readOptionsFile(userOptionsPath());
    if (!text || text->empty()) {
        return text ? 0 : kDamaged;
    }
    const std::string begin = kOptionsBegin;
    return text->starts_with(begin) && text->ends_with('\n')
               ? numberOf(text->substr(begin.size(), text->size() - begin.size() - 1))
               : kDamaged;
}

constexpr std::array kStores{
    UserStore{"preset", savePresetAgain, readPresetAgain},
    UserStore{"renamed preset", renamePreset, readRenamedPreset},
    UserStore{"watermark", saveWatermark, readWatermark},
    UserStore{"paper", savePaper, readPaper},
    UserStore{"preferences", savePreferences, readPreferences},
    UserStore{"address book", savePerson, readPerson},
    UserStore{"queue's options", saveOptions, readOptions},
};

}  // namespace

std::span<const UserStore> userStores() {
    return kStores;
}

void putStoresInto(const std::string& folder) {
    const auto place = [&](const char* variable, const char* name) {
        const std::string path = folder + "/" + name;
        std::filesystem::create_directories(path);
        setenv(variable, path.c_str(), 1);
    };
    place("HOME", "home");
    place("XDG_DATA_HOME", "data");
    place("XDG_CONFIG_HOME", "config");
    place("XDG_CACHE_HOME", "cache");
    unsetenv("DBUS_SESSION_BUS_ADDRESS");  // the address book is then a file
}
