#include "panels/image_options/invert_image.h"

#include "model/settings/record_ticket.h"
#include "model/settings/ticket_access.h"
#include "model/settings/ticket_items.h"
#include "platform/toolbox/Controls.h"
#include "ui/panel_operations.h"

namespace {

constexpr SInt32 kInvertImageGroup = 910;
constexpr SInt32 kNegativeImage = 911;
constexpr SInt32 kMirrorImage = 912;

bool ReadFlag(CFDictionaryRef dictionary, CFStringRef key) {
    CFIndex value = 0;
    return GetCFIndexFromCFDictionary(dictionary, key, &value) && value != 0;
}

}  // namespace

void InvertImageInitialize(InvertImageContext* context, II_Options* options) {
    *context = {};
    *options = {true, false, false};
}

void InvertImageOpen(ControlRef pane, InvertImageContext* context) {
    *context = {FindPanelControl(pane, kInvertImageGroup), FindPanelControl(pane, kNegativeImage),
                FindPanelControl(pane, kMirrorImage)};
}

void InvertImageSetControls(const InvertImageContext& context, const II_Options& options) {
    SetControl32BitValue(context.negative, options.negative ? 1 : 0);
    SetControl32BitValue(context.mirror, options.mirror ? 1 : 0);
}

II_Options InvertImageGetOptions(const InvertImageContext& context, const II_Options& options) {
    if (context.group == nullptr) {
        return options;
    }
    return {options.valid, GetControl32BitValue(context.negative) != 0, GetControl32BitValue(context.mirror) != 0};
}

II_Options InvertImageReadOptions(PMTicketRef ticket) {
    CFDictionaryRef dictionary = nullptr;
    PMTicketGetCFDictionary(ticket, kPMTopLevel, kPMTopLevel, kInvertImageOptionsItem, &dictionary);
    return {true, ReadFlag(dictionary, kNegativeImageKey), ReadFlag(dictionary, kMirrorImageKey)};
}

void InvertImageWriteOptions(const II_Options& options, PMTicketRef ticket) {
    if (options.valid) {
        PMTicketSetCFDictionary(ticket, kTicketCreator, kInvertImageOptionsItem,
                                InvertImageCreateTicketFromOptions(options).get(), kPMUnlocked);
    }
}

CFRef<CFDictionaryRef> InvertImageCreateTicketFromOptions(const II_Options& options) {
    const CFRef<CFMutableDictionaryRef> dictionary = CreateRecordDictionary();
    WriteTicketValue(dictionary.get(), kNegativeImageKey, options.negative ? 1 : 0);
    WriteTicketValue(dictionary.get(), kMirrorImageKey, options.mirror ? 1 : 0);
    return CFRef<CFDictionaryRef>::retain(dictionary.get());
}

CFStringRef InvertImagePicture(const II_Options& options) {
    if (options.negative) {
        return options.mirror ? CFSTR("Negative-&-Mirror-Image.gif") : CFSTR("Negative-Image.gif");
    }
    return options.mirror ? CFSTR("Mirror-Image.gif") : CFSTR("Invert-Image-Off.gif");
}
