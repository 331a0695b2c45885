// Any bytes as a file of settings, or any property list as the settings in it, and what presets keep of them.
//
// Contract: a file is settings, which are the same when they are written and read, or a reason in one line. What a
// preset keeps it keeps again, and is the same preset; the last used settings are a part of it. The file's name for
// them is a text that a preset may have.

#include "host/settings/settings_file.h"

#include "fuzz/memory_file.h"
#include "fuzz/ticket_maker.h"
#include "host/settings/preset_content.h"
#include "host/settings/presets.h"
#include "platform/files/temporary_files.h"

namespace {

bool isSame(const JobSettings& one, const JobSettings& other) {
    return CFEqual(one.printSettings.get(), other.printSettings.get()) &&
           CFEqual(one.pageFormat.get(), other.pageFormat.get());
}

void checkPresets(const JobSettings& settings) {
    const JobSettings preset = presetContent(settings);
    FUZZ_EXPECT(!preset.printerInfo && isSame(presetContent(preset), preset) && isSamePreset(settings, preset));
    const JobSettings last = lastUsedContent(settings);
    FUZZ_EXPECT(isSame(lastUsedContent(preset), last));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > 0 && data[0] != '<' && data[0] % 2 == 0) {
        const auto items = makeTicket(data + 1, size - 1);
        if (CFGetTypeID(items.get()) == CFDictionaryGetTypeID()) {
            const auto ticket = CFRef<CFDictionaryRef>::retain(static_cast<CFDictionaryRef>(items.get()));
            checkPresets(data[0] % 4 == 0 ? JobSettings{ticket, {}, {}} : JobSettings{{}, ticket, ticket});
        }
        return 0;
    }
    std::string name;
    auto settings = readSettingsFile(memoryFile(data, size), &name);
    if (!settings) {
        FUZZ_EXPECT(settings.failure().line.find('\n') == std::string::npos);
        return 0;
    }
    const std::string clean = cleanPresetName(name);
    FUZZ_EXPECT(cleanPresetName(clean) == clean);
    checkPresets(*settings);
    static const WorkFolder folder;
    const std::string path = folder.path() + "/settings";
    FUZZ_EXPECT(!writeSettingsFile(*settings, path, name));
    std::string nameAgain;
    auto again = readSettingsFile(path, &nameAgain);
    FUZZ_EXPECT(again && isSame(*again, *settings) && nameAgain == name);
    return 0;
}
