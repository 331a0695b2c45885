#include "panels/special_pages/special_pages_descriptions.h"

#include "model/settings/number_text.h"
#include "model/settings/setting_map.h"
#include "model/stock/stock_summary.h"
#include "platform/foundation/CFString.h"
#include "ui/localization.h"

#include <string>

namespace {

std::u16string Text(CFStringRef string) {
    std::u16string text(static_cast<std::size_t>(CFStringGetLength(string)), u'\0');
    CFStringGetCharacters(string, {0, CFStringGetLength(string)}, text.data());
    return text;
}

std::u16string Localized(CFBundleRef bundle, CFStringRef key) {
    return Text(CopyLocalizedText(bundle, key).get());
}

std::u16string Digits(SInt32 number) {
    const std::string digits = std::to_string(number);
    return {digits.begin(), digits.end()};
}

std::u16string UsersDigits(SInt32 number) {
    return Text(CFRef<CFStringRef>::adopt(CreateLocalizedCFStringFromNumberWithDecimals(number, 0)).get());
}

CFRef<CFStringRef> String(const std::u16string& text) {
    return CFRef<CFStringRef>::adopt(CFStringCreateWithCharacters(
        kCFAllocatorDefault, reinterpret_cast<const UniChar*>(text.data()), static_cast<CFIndex>(text.size())));
}

/// The name of a map's value; empty for a value that has none.
std::u16string ValueName(CFBundleRef bundle, const SettingMap* map, SInt32 value) {
    const CFStringRef key = LocalizedKeyForTicketValue(map, value);
    return key != nullptr ? Localized(bundle, key) : std::u16string();
}

CFRef<CFStringRef> Description(CFBundleRef bundle, const std::u16string& own, JobContext context, const Stock& stock) {
    const auto comma = CopyLocalizedText(bundle, CFSTR("List Comma"));
    const std::u16string paper = Text(GenerateStockDescription(bundle, context, stock, comma.get()).get());
    return String(own + (own.empty() || paper.empty() ? u"" : Localized(bundle, CFSTR("List Semicolon"))) + paper);
}

}  // namespace

CFRef<CFStringRef> CreateCoverAttributesDescription(CFBundleRef bundle, const Cover& cover) {
    return Description(bundle, ValueName(bundle, CoverSidesImagedMap, cover.sidesImaged()), JobContext::cover,
                       cover.stock());
}

CFRef<CFStringRef> CreateInsertAttributesDescription(CFBundleRef bundle, const Insert& insert) {
    return Description(bundle,
                       Localized(bundle, CFSTR("InsertSummaryQuantity")) + u' ' + UsersDigits(insert.quantity()),
                       JobContext::insert, insert.stock());
}

CFRef<CFStringRef> CreateExceptionAttributesDescription(CFBundleRef bundle, const ExceptionPage& page) {
    return Description(bundle, ValueName(bundle, PlexMap, page.plex()), JobContext::exception, page.stock());
}

CFRef<CFStringRef> CreateInsertPagesDescription(CFBundleRef bundle, const Insert& insert) {
    return insert.startPage() == 0 ? CopyLocalizedText(bundle, CFSTR("SpecialPageSummaryBefore1"))
                                   : String(UsersDigits(insert.startPage()));
}

CFRef<CFStringRef> CreateExceptionPagesDescription(const ExceptionPage& page) {
    std::u16string pages = Digits(page.startPage());
    if (page.endPage() != page.startPage()) {
        pages += u'-' + Digits(page.endPage());
    }
    return String(pages);
}

CFRef<CFStringRef> CreatePageNumberDescription(SInt32 page) {
    return String(Digits(page));
}

CFRef<CFStringRef> CreateImageShiftDescription(CFBundleRef bundle, const _IS_Options& options) {
    if (options.option == kTicketValueUnset) {
        return CopyLocalizedText(bundle, CFSTR("Image Shift None"));
    }
    const CFStringRef units = options.inches != 0 ? CFSTR("Units Inches") : CFSTR("Units Millimeters");
    return String(Localized(bundle, CFSTR("Image Shift")) + u' ' + Digits(options.x1) + u' ' +
                  Localized(bundle, units));
}
