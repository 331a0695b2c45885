#include "tests/support/gallery/pieces.h"

#include "platform/foundation/CFBundle.h"
#include "platform/foundation/text.h"
#include "platform/toolbox/Controls.h"
#include "platform/toolbox/Events.h"
#include "tests/support/gallery/finishing_pieces.h"
#include "tests/support/gallery/job_pieces.h"
#include "tests/support/gallery/special_page_pieces.h"
#include "tests/support/gallery/stock_pieces.h"
#include "ui/nib_window.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <iterator>

extern "C" {
OSStatus GetAboutPanelInterface(PlugInIntf** interface);
OSStatus GetAdvancedPanelInterface(PlugInIntf** interface);
OSStatus GetColorOptionsPanelInterface(PlugInIntf** interface);
OSStatus GetImageOptionsPanelInterface(PlugInIntf** interface);
OSStatus GetJobNotesPanelInterface(PlugInIntf** interface);
OSStatus GetLayoutPanelInterface(PlugInIntf** interface);
OSStatus GetPaperOutputPanelInterface(PlugInIntf** interface);
OSStatus GetSpecialPagesPanelInterface(PlugInIntf** interface);
OSStatus GetWatermarkPanelInterface(PlugInIntf** interface);
}

namespace {

// clang-format off
constexpr Piece kPieces[] = {
    // name, panel, dialog
    {"about", GetAboutPanelInterface, nullptr},
    {"advanced", GetAdvancedPanelInterface, nullptr},
    {"booklet-creation", nullptr, runBookletCreation},
    {"booklet-finishing", nullptr, runBookletFinishing},
    {"color-options", GetColorOptionsPanelInterface, nullptr},
    {"covers", nullptr, runCovers},
    {"custom-stock-size", nullptr, runCustomStockSize},
    {"delayed-print", nullptr, runDelayedPrint},
    {"detailed-library-selection", nullptr, runDetailedLibrarySelection},
    {"detailed-stock-selection", nullptr, runDetailedStockSelection},
    {"exceptions", nullptr, runExceptions},
    {"fax-address-book", nullptr, runFaxAddressBook},
    {"fax-cover-sheet", nullptr, runFaxCoverSheet},
    {"finishing-custom", nullptr, runCustomFinishing},
    {"finishing-fold", nullptr, runFold},
    {"finishing-multiple", nullptr, runMultipleFinishing},
    {"finishing-offset", nullptr, runOffset},
    {"finishing-position", nullptr, runStaplePosition},
    {"image-options", GetImageOptionsPanelInterface, nullptr},
    {"inserts", nullptr, runInserts},
    {"job-notes", GetJobNotesPanelInterface, nullptr},
    {"lan-fax", nullptr, runLANFax},
    {"layout", GetLayoutPanelInterface, nullptr},
    {"page-stock-selection", nullptr, runPageStockSelection},
    {"paper-output", GetPaperOutputPanelInterface, nullptr},
    {"secure-print", nullptr, runSecurePrint},
    {"separators", nullptr, runSeparators},
    {"special-pages", GetSpecialPagesPanelInterface, nullptr},
    {"stock-description", nullptr, runStockDescription},
    {"stock-library", nullptr, runStockLibrary},
    {"stock-library-selection", nullptr, runStockLibrarySelection},
    {"stock-selection", nullptr, runStockSelection},
    {"tab-stock-setup", nullptr, runTabStockSetup},
    {"tab-stock-setup-with-modulus", nullptr, runTabStockSetupWithModulus},
    {"watermark", GetWatermarkPanelInterface, nullptr},
};
// clang-format on

OSStatus closeOnButtons(EventHandlerCallRef, EventRef event, void* window) {
    HICommand command{};
    GetEventParameter(event, kEventParamDirectObject, typeHICommand, nullptr, sizeof command, nullptr, &command);
    if (command.commandID != FourCharCode("ok  ") && command.commandID != FourCharCode("not!")) {
        return eventNotHandledErr;
    }
    return QuitAppModalLoopForWindow(static_cast<WindowRef>(window));
}

std::filesystem::path resourcesOf(CFBundleRef bundle) {
    const auto url = CFRef<CFURLRef>::adopt(CFBundleCopyBundleURL(bundle));
    std::array<UInt8, 4096> path{};
    CFURLGetFileSystemRepresentation(url.get(), true, path.data(), static_cast<CFIndex>(path.size()));
    return std::filesystem::path(reinterpret_cast<const char*>(path.data())) / "Contents" / "Resources";
}

}  // namespace

const Piece* findPiece(const std::string& name) {
    const auto* piece = std::ranges::find(kPieces, name, &Piece::name);
    return piece != std::end(kPieces) ? piece : nullptr;
}

std::vector<std::string> pieceNames() {
    std::vector<std::string> names;
    std::ranges::transform(kPieces, std::back_inserter(names), &Piece::name);
    return names;
}

std::vector<std::string> nibWindowNames(CFBundleRef bundle) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(resourcesOf(bundle))) {
        if (entry.path().extension() == ".window" || entry.path().extension() == ".ui") {
            names.push_back((entry.path().parent_path().stem() / entry.path().stem()).string());
        }
    }
    std::ranges::sort(names);
    return names;
}

OSStatus runNibWindow(CFBundleRef bundle, const std::string& name) {
    const std::size_t slash = name.find('/');
    WindowFromNib window;
    const OSStatus status =
        window.load(bundle, makeString(name.substr(0, slash)).get(), makeString(name.substr(slash + 1)).get());
    if (status != noErr) {
        return status;
    }
    static constexpr EventTypeSpec kCommand{kEventClassCommand, kEventCommandProcess};
    InstallWindowEventHandler(window.get(), closeOnButtons, 1, &kCommand, window.get(), nullptr);
    return RunAppModalLoopForWindow(window.get());
}
