#include "watermark/panel/watermark_editor.h"

#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFString.h"
#include "ui/private_bundle.h"

#include <cstdio>

InitializeCocoaProc CocoaInitializeCocoa = nullptr;
EditWatermarkProc CocoaEditWatermark = nullptr;

void LoadPrivatePlugIns(CFStringRef bundleName, CFBundleRef* privateBundle, CFBundleRef plugIn) {
    if (!LoadPrivateBundle(plugIn, bundleName, privateBundle)) {
        std::fputs("Bundle didn't load\n", stderr);
    }
}

CFBundleRef LoadWatermarkEditor(CFBundleRef plugIn) {
    CFBundleRef editor = nullptr;
    LoadPrivatePlugIns(CFSTR("WatermarkEditor.bundle"), &editor, plugIn);
    CocoaInitializeCocoa =
        reinterpret_cast<InitializeCocoaProc>(CFBundleGetFunctionPointerForName(editor, CFSTR("InitializeCocoa")));
    if (CocoaInitializeCocoa != nullptr) {
        CocoaInitializeCocoa();
    }
    CocoaEditWatermark =
        reinterpret_cast<EditWatermarkProc>(CFBundleGetFunctionPointerForName(editor, CFSTR("editWatermark")));
    return editor;
}

void ForgetWatermarkEditor() {
    CocoaInitializeCocoa = nullptr;
    CocoaEditWatermark = nullptr;
}
