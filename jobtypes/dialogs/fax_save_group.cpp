#include "jobtypes/dialogs/fax_save_group.h"

#include "jobtypes/dialogs/fax_texts.h"
#include "jobtypes/dialogs/fax_window.h"
#include "ui/help.h"

namespace {

enum ControlNumber : SInt32 {
    kName = 1000,
    kPicture = 1001,
};

struct SaveGroupContext {
    FaxWindow window;
    FaxRecipientList* list;
};

/// Whether the dialog is done; tells why not.
bool SaveGroup(const SaveGroupContext& context) {
    const CFBundleRef bundle = context.window.bundle();
    const CFRef<CFStringRef> name = context.window.copyText(kName);
    if (context.list->count() == 0) {
        return false;
    }
    if (CFStringGetLength(name.get()) == 0) {
        ShowFaxNotice(bundle, CFSTR("Required Field Header"),
                      CopyFaxText(bundle, CFSTR("Group Name Required Message")).get());
        return false;
    }
    if (!context.list->saveAsABGroupWithName(name.get())) {
        ShowFaxNotice(bundle, CFSTR("Alert Header"), CopyFaxText(bundle, CFSTR("Address Book Message")).get());
        return false;
    }
    return true;
}

OSStatus SaveGroupEventHandler(EventHandlerCallRef, EventRef event, void* userData) {
    const auto& context = *static_cast<SaveGroupContext*>(userData);
    switch (CommandOf(event)) {
        case FourCharCode("ok  "):
            return SaveGroup(context) ? QuitAppModalLoopForWindow(context.window.get()) : noErr;
        case FourCharCode("not!"):
            return QuitAppModalLoopForWindow(context.window.get());
        case FourCharCode("Thlp"):
            return DisplayHelp(context.window.bundle(), CFSTR("Mac_topics/idh_add_to_apple_address_book.htm"), nullptr);
        default:
            return eventNotHandledErr;
    }
}

}  // namespace

void RunModalSaveGroupDialog(CFBundleRef bundle, FaxRecipientList* list) {
    SaveGroupContext context{FaxWindow(bundle), list};
    if (context.window.load(CFSTR("Group")) != noErr) {
        return;
    }
    context.window.showPicture(kPicture, CFSTR("PBGroup.gif"));
    context.window.handleCommands(SaveGroupEventHandler, &context);
    context.window.focus(kName);
    RunAppModalLoopForWindow(context.window.get());
}
