#include "core/features/printer_model.h"

#include "core/features/feature_database.h"
#include "core/features/model_features.h"
#include "platform/files/folders.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/text.h"

#include <algorithm>
#include <cctype>
#include <optional>

namespace {

CFRef<CFStringRef> gName;
std::optional<ModelFeatures> gFeatures;  // none for the models that are in code

/// A PPD may say anything of its model: a name that leads elsewhere, or that no file can have, has none.
CFRef<CFURLRef> CopyFileOfModel(const std::string& name) {
    const bool isFileName = !name.empty() && name.front() != '.' && std::ranges::all_of(name, [](unsigned char c) {
        return std::isalnum(c) != 0 || std::string_view(" +-._").find(static_cast<char>(c)) != std::string::npos;
    });
    return isFileName ? CFRef<CFURLRef>::adopt(FSCopyDataFileURL(makeString("models/" + name + ".plist").get()))
                      : CFRef<CFURLRef>();
}

}  // namespace

const InstalledFeature* LoadPrinterModel(const std::string& name) {
    UnloadPrinterModel();
    if (name == "ZR410" || name == "ZR420") {
        return InstalledFeatures;
    }
    gName = makeString(name);
    gFeatures.emplace(gName.get());
    if (!gFeatures->isKnown()) {
        const auto file = CopyFileOfModel(name);
        if (file && TDPAddProfile(file.get())) {
            gFeatures.emplace(gName.get());
        }
    }
    return gFeatures->isKnown() ? gFeatures->table() : InstalledFeatures;
}

void UnloadPrinterModel() {
    gFeatures.reset();
    gName = nullptr;
}

CFStringRef UnknownModelName() {
    return gFeatures && !gFeatures->isKnown() ? gName.get() : nullptr;
}

bool HasModelFeature(CFStringRef feature) {
    return gFeatures && gFeatures->has(feature);
}

CFArrayRef ListOfModel(CFStringRef key) {
    return gFeatures ? gFeatures->list(key) : nullptr;
}
