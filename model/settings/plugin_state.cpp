#include "model/settings/plugin_state.h"

namespace {

CFBundleRef gBundle = nullptr;
PMPrintSession gPrintSession = nullptr;
bool gShowsStockDetails = false;
PDESyncProc gSyncProc = nullptr;

}  // namespace

CFBundleRef GetPDEBundle() {
    return gBundle;
}
void SetPDEBundle(CFBundleRef bundle) {
    gBundle = bundle;
}

PMPrintSession GetCurrentPrintSession() {
    return gPrintSession;
}
void SetCurrentPrintSession(PMPrintSession session) {
    gPrintSession = session;
}

bool ShowsStockDetails() {
    return gShowsStockDetails;
}
void SetShowsStockDetails(bool shows) {
    gShowsStockDetails = shows;
}

OSStatus PDESync(PMPrintSession, Boolean ticketsToControls) {
    return gSyncProc == nullptr ? kPMInvalidPrintSession : gSyncProc(gPrintSession, ticketsToControls);
}
void SetPDESyncProc(PDESyncProc proc) {
    gSyncProc = proc;
}
