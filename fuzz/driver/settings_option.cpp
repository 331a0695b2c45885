// Any bytes as the options of a job: as their text, as the value that holds settings, and as what is packed in it.
//
// Contract: the filter without the print server's library finds the values that the library finds; settings that are
// taken can be packed again, if they fit, and are the same then; whatever is packed takes no more memory than settings
// may.

#include "platform/printing/settings_option.h"

#include "driver/queue/option_text.h"
#include "fuzz/fuzz_target.h"
#include "platform/foundation/CFString.h"
#include "platform/printing/option_list.h"

#include <QByteArray>

#include <string>

#include <zlib.h>

namespace {

void checkText(const std::string& text) {
    const OptionList options = optionsInFilterText(text);
    for (const char* name : {"tavro-settings", "Collate", "a"}) {
        const std::string* const expected = findOption(options, name);
        const auto found = optionInText(text, name);
        FUZZ_EXPECT(expected == nullptr ? !found : found == *expected);
    }
}

void checkValue(const std::string& value) {
    std::string reason;
    const auto settings = unpackSettings(value, &reason);
    FUZZ_EXPECT(static_cast<bool>(settings) == reason.empty());
    const auto packed = settings ? packSettings(settings.get(), &reason) : std::nullopt;
    if (packed) {
        FUZZ_EXPECT(packed->size() <= kMostSettingsText);
        const auto again = unpackSettings(*packed, &reason);
        FUZZ_EXPECT(CFEqual(again.get(), settings.get()));
    }
}

void checkPacked(const std::string& bytes) {
    uLongf size = compressBound(bytes.size());
    QByteArray packed(static_cast<qsizetype>(size), '\0');
    compress2(reinterpret_cast<Bytef*>(packed.data()), &size, reinterpret_cast<const Bytef*>(bytes.data()),
              bytes.size(), Z_BEST_SPEED);
    packed.truncate(static_cast<qsizetype>(size));
    checkValue("1." + packed.toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals).toStdString());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::string rest(reinterpret_cast<const char*>(data) + 1, size - 1);
    switch (data[0] % 3) {
        case 0:
            checkText(rest.substr(0, rest.find('\0')));
            break;
        case 1:
            checkValue(rest);
            break;
        default:
            checkPacked(rest);
            break;
    }
    return 0;
}
