#include "watermark/editor/editor_texts.h"

#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"

QString EditorText(const char* key) {
    const auto keyText = CFRef<CFStringRef>::adopt(CFStringCreateWithCString(nullptr, key, kCFStringEncodingUTF8));
    const CFBundleRef bundle = CFBundleGetBundleWithIdentifier(CFStringMakeConstant(kEditorIdentifier));
    const auto text = CFRef<CFStringRef>::adopt(
        CFBundleCopyLocalizedString(bundle, keyText.get(), CFSTR("STRING NOT FOUND"), nullptr));
    QString read(CFStringGetLength(text.get()), Qt::Uninitialized);
    CFStringGetCharacters(text.get(), CFRange{0, read.size()}, reinterpret_cast<UniChar*>(read.data()));
    return read;
}

const char* RefusalKey(FontRefusal refusal) {
    switch (refusal) {
        case FontRefusal::embeddingRestricted:
        case FontRefusal::bitmapsOnly:
            return "Font Restricted";
        case FontRefusal::postScriptOutlines:
        case FontRefusal::variableOutlines:
        case FontRefusal::noOutlines:
        case FontRefusal::tooLarge:
            return "Font Of Other Kind";
        default:
            return "Font Damaged";
    }
}
