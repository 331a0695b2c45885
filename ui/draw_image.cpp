#include "ui/draw_image.h"

#include "model/settings/plugin_state.h"
#include "ui/image_import_manager.h"

namespace {

void DrawFrom(ImageImportManager& pictures, CFStringRef fileName, CGContextRef context) {
    if (const CGImageRef image = pictures.image(fileName)) {
        const HIRect place = {
            {0, 0}, {static_cast<double>(CGImageGetWidth(image)), static_cast<double>(CGImageGetHeight(image))}};
        HIViewDrawCGImage(context, &place, image);
    }
}

}  // namespace

void DrawImage(CFStringRef fileName, ControlRef control, Boolean keepBackground) {
    const CGContextRef context = HIViewGetDrawContext(control);
    if (fileName == nullptr || context == nullptr) {
        return;
    }
    HIRect bounds{};
    if (!keepBackground && HIViewGetBounds(control, &bounds) == noErr) {
        HIThemeEraseBackground(context, &bounds);
    }
    if (ImageImportManager* pictures = ImageImportManager::current()) {
        DrawFrom(*pictures, fileName, context);
    } else {
        ImageImportManager once(GetPDEBundle());
        DrawFrom(once, fileName, context);
    }
}
