#include "fuzz/ticket_maker.h"

#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFNumber.h"
#include "platform/foundation/CFPropertyList.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/text.h"

#include <algorithm>
#include <string>

namespace {

constexpr const char* kKeys[] = {"Size",
                                 "Width",
                                 "Length",
                                 "Type",
                                 "Modulus",
                                 "Color",
                                 "StartPage",
                                 "Stock",
                                 "SidesImaged",
                                 "Quantity",
                                 "EndPage",
                                 "com.tavro.print.ImageShiftOptionsPage",
                                 "LightenDarken",
                                 "Option",
                                 "Inches",
                                 "X1",
                                 "Y1",
                                 "X2",
                                 "Y2",
                                 "FCLightness",
                                 "FCColorCast",
                                 "FCCyanRed",
                                 "FCMagentaGreen",
                                 "FCYellowBlue",
                                 "FCTrapping",
                                 "FCTrappingFastDirection",
                                 "FCTrappingSlowDirection",
                                 "FCTRC",
                                 "RGBImagesProfile",
                                 "DestinationProfile",
                                 "GrayImagesProfile",
                                 "CMYKImagesProfile",
                                 "ImageRendering",
                                 "PPDDict",
                                 "Duplex",
                                 "PageSize",
                                 "Collate",
                                 "com.apple.print.PrintSettings.PMPageRange",
                                 "com.apple.print.PrintSettings.PMCopies",
                                 "com.apple.print.PageFormat.PMOrientation",
                                 "com.tavro.print.JobLevelStock",
                                 "com.tavro.print.SpecialPages.FrontCover",
                                 "com.tavro.print.SpecialPages.BackCover",
                                 "com.tavro.print.SpecialPages.InsertList",
                                 "com.tavro.print.SpecialPages.ExceptionList",
                                 "com.tavro.print.SeparatorOption",
                                 "com.tavro.print.SeparatorColor",
                                 "com.tavro.print.FinishingOffset",
                                 "com.tavro.print.FinishingOffsetEnableSubset",
                                 "com.tavro.print.FinishingOffsetPagesPerSubset",
                                 "com.tavro.print.FinishingOptions",
                                 "com.tavro.print.FinishingCustom",
                                 "com.tavro.print.BookletLayout",
                                 "com.tavro.print.BookletForceNewSize",
                                 "com.tavro.print.InvertImageOptions",
                                 "NegativeImage",
                                 "com.tavro.print.watermark.Watermark",
                                 "com.tavro.print.JobType",
                                 "JobType",
                                 "DelayedPrintTime",
                                 "SecurePrintPassword",
                                 "com.tavro.print.FaxRecipientList",
                                 "FaxNumber",
                                 "FirstName",
                                 "com.tavro.print.FaxOptions",
                                 "CoverSheet",
                                 "SendTime",
                                 "CreditCard",
                                 "Weight",
                                 "CustomName",
                                 "com.tavro.print.JobNotesMessage"};

class Maker {
public:
    Maker(const std::uint8_t* data, std::size_t size, const TicketForm& form)
        : next_(data), end_(data + size), form_(form) {}

    CFRef<CFTypeRef> make(int depth) {
        switch (byte() % 8) {
            case 0:
            case 1:
                return makeInteger(1);  // tickets mostly hold small ones
            case 2:
                return makeInteger(8);
            case 3: {
                const double value = static_cast<double>(integer(8)) / 256;
                return adopt(CFNumberCreate(nullptr, kCFNumberDoubleType, &value));
            }
            case 4:
                return makeText();
            case 5:
                return CFRef<CFTypeRef>::retain(kCFBooleanTrue);
            case 6: {
                const auto array =
                    CFRef<CFMutableArrayRef>::adopt(CFArrayCreateMutable(nullptr, 0, &kCFTypeArrayCallBacks));
                for (int count = depth > 4 ? 0 : byte() % 16; count > 0; --count) {
                    CFArrayAppendValue(array.get(), make(depth + 1).get());
                }
                return CFRef<CFTypeRef>::retain(array.get());
            }
            default: {
                const auto dictionary = CFRef<CFMutableDictionaryRef>::adopt(CFDictionaryCreateMutable(
                    nullptr, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
                for (int count = depth > 4 ? 0 : byte() % 16; count > 0; --count) {
                    const CFStringRef key = CFStringMakeConstant(form_.keys[byte() % form_.keys.size()]);
                    CFDictionarySetValue(dictionary.get(), key, make(depth + 1).get());
                }
                return CFRef<CFTypeRef>::retain(dictionary.get());
            }
        }
    }

private:
    static CFRef<CFTypeRef> adopt(CFTypeRef object) { return CFRef<CFTypeRef>::adopt(object); }

    CFRef<CFTypeRef> makeInteger(int bytes) {
        const CFIndex value = integer(bytes);
        return adopt(CFNumberCreate(nullptr, kCFNumberCFIndexType, &value));
    }

    CFRef<CFTypeRef> makeText() {
        const std::size_t length = byte() * std::size_t{2};
        if (!form_.hasTexts) {
            return adopt(CFStringCreateWithCString(nullptr, std::string(length, 'x').c_str(), kCFStringEncodingASCII));
        }
        const std::size_t count = std::min(length / 2, static_cast<std::size_t>(end_ - next_));
        const std::string_view text(reinterpret_cast<const char*>(next_), count);
        next_ += count;
        return CFRef<CFTypeRef>::retain(makeString(text).get());
    }

    std::uint8_t byte() { return next_ == end_ ? std::uint8_t{0} : *next_++; }

    /// A signed number of that many bytes, the highest first.
    CFIndex integer(int bytes) {
        std::uint64_t bits = 0;
        for (int i = 0; i < bytes; ++i) {
            bits = bits << 8 | byte();
        }
        const int unused = 64 - 8 * bytes;
        return static_cast<CFIndex>(bits << unused) >> unused;
    }

    const std::uint8_t* next_;
    const std::uint8_t* end_;
    const TicketForm& form_;
};

}  // namespace

CFRef<CFTypeRef> makeTicket(const std::uint8_t* data, std::size_t size) {
    if (size > 0 && data[0] == '<') {
        const auto bytes = CFRef<CFDataRef>::adopt(CFDataCreate(nullptr, data, static_cast<CFIndex>(size)));
        return CFRef<CFTypeRef>::adopt(
            CFPropertyListCreateFromXMLData(nullptr, bytes.get(), kCFPropertyListImmutable, nullptr));
    }
    return makeTicket(data, size, {kKeys, false});
}

CFRef<CFTypeRef> makeTicket(const std::uint8_t* data, std::size_t size, const TicketForm& form) {
    return Maker(data, size, form).make(0);
}
