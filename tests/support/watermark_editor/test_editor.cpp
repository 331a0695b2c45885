// A watermark editor whose user is the test.

#include "watermark/panel/watermark_editor.h"

namespace {

EditWatermarkProc user = nullptr;
int initialisations = 0;

}  // namespace

extern "C" void InitializeCocoa() {
    ++initialisations;
}

extern "C" SInt32 editWatermark(WatermarkRecord* record, SInt32 unused1, CFBundleRef plugIn, SInt32 unused2) {
    return user != nullptr ? user(record, unused1, plugIn, unused2) : 1;
}

/// For the test: who edits from now on. Returns how often the module has been initialised.
extern "C" int SetTestUser(EditWatermarkProc newUser) {
    user = newUser;
    return initialisations;
}
