#include "host/dialog/dialog_presets.h"

#include "driver/job/output_color.h"
#include "host/dialog/dialog_controls.h"
#include "host/dialog/notice.h"
#include "host/dialog/preset_name_dialog.h"
#include "host/settings/preset_content.h"
#include "host/settings/shared_presets.h"
#include "host/settings/texts.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/terminal_text.h"
#include "platform/foundation/text.h"

#include <algorithm>
#include <cstdio>

namespace {

using Origin = SettingsOrigin;

/// The items with one of the others' added.
CFRef<CFDictionaryRef> withItemOf(const CFRef<CFDictionaryRef>& items, CFDictionaryRef others, CFStringRef key) {
    const auto merged = CFRef<CFMutableDictionaryRef>::adopt(
        items
            ? CFDictionaryCreateMutableCopy(nullptr, 0, items.get())
            : CFDictionaryCreateMutable(nullptr, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
    if (const void* const item = CFDictionaryGetValue(others, key)) {
        CFDictionarySetValue(merged.get(), key, item);
    }
    return CFRef<CFDictionaryRef>::retain(merged.get());
}

std::string keyOf(const PrintSession& session) {
    return printerKey(session.printer().queue(), session.printer().ppdPath());
}

}  // namespace

DialogPresets::DialogPresets(WindowRef window, CFBundleRef bundle, Dialog dialog, SettingsOrigin origin)
    : bundle_(bundle),
      dialog_(std::move(dialog)),
      menu_(hostControl(window, kPresetMenu), hostControl(window, kPresetActions), bundle) {
    content_.origin = std::move(origin);
}

void DialogPresets::begin(const PrintSession& session) {
    unchanged_.reset();
    printer_ = keyOf(session);
    content_.hasQueue = !session.printer().queue().empty();
    content_.isChanged = false;
    content_.hasLastUsed = lastUsed_.contains(printer_);
    menu_.show(content_);
}

void DialogPresets::settle(const PrintSession& session, SInt32 panel) {
    const bool isOtherPanel = std::exchange(panel_, panel) != panel;
    const bool isOtherPanelOnly = !std::exchange(isTouched_, false) && isOtherPanel;
    JobSettings now = presetContent(session.copySettings());
    if (!unchanged_ || (isOtherPanelOnly && !content_.isChanged)) {
        unchanged_ = std::move(now);
        return;
    }
    if (const bool isChanged = !isSamePreset(now, *unchanged_); isChanged != content_.isChanged) {
        content_.isChanged = isChanged;
        if (isChanged) {
            forgetChanged();
        }
        menu_.show(content_);
    }
}

void DialogPresets::forgetChanged() {
    left_.reset();
    content_.canGoBack = false;
}

void DialogPresets::refresh() {
    KeptSettings::Names found = presets_.list();
    content_.presets = std::move(found.names);
    std::vector<std::string> unreadable;
    for (const auto& [file, line] : found.unreadable) {
        if (std::ranges::find(content_.unreadable, file) == content_.unreadable.end()) {
            printLine(stderr, "tavro-print: " + line);
        }
        unreadable.push_back(file);
    }
    content_.unreadable = std::move(unreadable);
    menu_.show(content_);
}

void DialogPresets::choose() {
    const PresetMenuItem item = menu_.chosen();
    menu_.revert();
    if (item.kind != PresetMenuItem::Kind::origin) {
        return;
    }
    settle(dialog_.session(), panel_);  // with what was changed just before
    if (content_.isChanged) {
        left_ = {content_.origin, dialog_.session().copySettings(), *unchanged_};
        content_.canGoBack = true;
    } else if (item.origin == content_.origin) {
        return;
    }
    if (!startFrom(item.origin)) {
        forgetChanged();
        menu_.show(content_);
    }
}

bool DialogPresets::act(OSType command) {
    const auto action = presetActionOf(command);
    if (!action) {
        return false;
    }
    switch (*action) {
        case PresetMenuItem::Kind::goBack:
            goBack();
            break;
        case PresetMenuItem::Kind::save:
            save();
            break;
        case PresetMenuItem::Kind::rename:
            rename();
            break;
        case PresetMenuItem::Kind::remove:
            remove();
            break;
        default:
            makeDefaults();
            break;
    }
    return true;
}

/// The last used settings say nothing about copies and orientation: these stay as they are.
Result<JobSettings> DialogPresets::settingsOf(const Origin& origin, const PrintSession& session) const {
    const JobSettings shown = session.copySettings();
    Result<JobSettings> settings = origin.kind == Origin::Kind::preset     ? presets_.read(origin.name)
                                   : origin.kind == Origin::Kind::lastUsed ? lastUsed_.read(printer_)
                                                                           : Result<JobSettings>(JobSettings{});
    if (!settings) {
        return settings;
    }
    if (origin.kind == Origin::Kind::lastUsed) {
        settings->printSettings = withItemOf(settings->printSettings, shown.printSettings.get(), kPMCopiesKey);
        settings->pageFormat = withItemOf(settings->pageFormat, shown.pageFormat.get(), kPMOrientationKey);
    }
    settings->printerInfo = shown.printerInfo;
    return settings;
}

bool DialogPresets::startFrom(const Origin& origin) {
    Result<JobSettings> settings = settingsOf(origin, dialog_.session());
    if (settings) {
        content_.origin = origin;
        dialog_.start(*settings);
    } else {
        tell(CFSTR("Preset Not Read Header"), settings.failure().line);
    }
    refresh();  // other dialogs may have kept some, or deleted this one
    return static_cast<bool>(settings);
}

JobSettings DialogPresets::settingsForOtherPrinter(const PrintSession& session) {
    forgetChanged();
    const bool isTheSameThere =
        content_.origin.kind == Origin::Kind::printerDefaults || content_.origin.kind == Origin::Kind::preset;
    if (isTheSameThere && !content_.isChanged) {
        if (Result<JobSettings> settings = settingsOf(content_.origin, session)) {
            return *settings;
        }
    }
    content_.origin = {Origin::Kind::elsewhere, session.printer().name()};
    return session.copySettings();
}

void DialogPresets::rememberSent(const PrintSession& session) const {
    if (const auto reason = lastUsed_.write(keyOf(session), session.copySettings())) {
        printLine(stderr, "tavro-print: " + *reason);  // the job is printed all the same
    }
}

void DialogPresets::adopt(const Origin& origin) {
    content_.origin = origin;
    unchanged_ = presetContent(dialog_.session().copySettings());
    content_.isChanged = false;
    refresh();
}

void DialogPresets::save() {
    const std::string suggestion = content_.origin.kind == Origin::Kind::preset ? content_.origin.name : std::string();
    PrintSession& session = dialog_.session();
    const auto asked = askPresetToSave(bundle_, suggestion, presets_, session.printer());
    if (!asked) {
        return;
    }
    if (const auto reason = presets_.write(asked->name, session.copySettings())) {
        tell(CFSTR("Preset Not Saved Header"), *reason);
        return;
    }
    const auto reason =
        asked->isForAll ? sharePreset(session, asked->name, bundle_) : unsharePreset(session.printer(), asked->name);
    if (reason) {
        tell(CFSTR("Preset Not Shared Header"), *reason);
    }
    adopt({Origin::Kind::preset, asked->name});
}

void DialogPresets::rename() {
    const auto name = askPresetName(bundle_, content_.origin.name, presets_);
    if (!name) {
        return;
    }
    if (const auto reason = presets_.rename(content_.origin.name, *name)) {
        tell(CFSTR("Preset Not Saved Header"), *reason);
    } else {
        if (const auto fault = renameSharedPreset(content_.origin.name, *name)) {
            tell(CFSTR("Preset Not Shared Header"), *fault);
        }
        content_.origin.name = *name;
    }
    refresh();
}

void DialogPresets::remove() {
    if (!askByNotice(localized(bundle_, CFSTR("Preset Delete Header"), shortened(content_.origin.name)),
                     localized(bundle_, isShared(content_.origin.name) ? CFSTR("Preset Delete Shared Message")
                                                                       : CFSTR("Preset Delete Message")),
                     localized(bundle_, CFSTR("Preset Delete Button")),
                     localized(bundle_, CFSTR("Preset Cancel Button")))) {
        return;
    }
    if (const auto reason = presets_.remove(content_.origin.name)) {
        tell(CFSTR("Preset Not Deleted Header"), *reason);
        refresh();
        return;
    }
    if (const auto reason = unsharePreset(content_.origin.name)) {
        tell(CFSTR("Preset Not Unshared Header"), *reason);
    }
    adopt({Origin::Kind::elsewhere, {}});
}

void DialogPresets::makeDefaults() {
    PrintSession& session = dialog_.session();
    if (!askByNotice(localized(bundle_, CFSTR("Preset Make Defaults Header"), session.printer().name()),
                     localized(bundle_, CFSTR("Preset Make Defaults Message")),
                     localized(bundle_, CFSTR("Preset Make Defaults Button")),
                     localized(bundle_, CFSTR("Preset Cancel Button")))) {
        return;
    }
    chooseColorCorrection(session.printer().get(), session.instructions().outputColor, session.printSettings());
    if (PMPrinterSaveDefaultSettings(session.printer().get(), session.printSettings(), session.pageFormat()) != noErr) {
        tell(CFSTR("Preset Defaults Not Saved Header"), utf8Text(PMGetLastErrorText()));
        return;
    }
    // What other programs have no word for is shown as a change of the new defaults: so these are looked at first.
    const JobSettings shown = session.copySettings();
    dialog_.renewPrinter();
    startFrom({Origin::Kind::printerDefaults, {}});
    showAsChangeOf(presetContent(dialog_.session().copySettings()), shown);
}

void DialogPresets::showAsChangeOf(const JobSettings& unchanged, const JobSettings& settings) {
    dialog_.start(settings);
    unchanged_ = unchanged;
    settle(dialog_.session(), panel_);
}

void DialogPresets::putBack(const JobSettings& settings) {
    const JobSettings unchanged = unchanged_ ? *unchanged_ : presetContent(settings);
    showAsChangeOf(unchanged, settings);
}

void DialogPresets::goBack() {
    const Changed changed = *left_;
    forgetChanged();
    content_.origin = changed.origin;
    showAsChangeOf(changed.unchanged, changed.settings);
    refresh();
}

void DialogPresets::tell(CFStringRef header, const std::string& line) const {
    showNotice(kCFUserNotificationCautionAlertLevel, localized(bundle_, header), makeString(line));
}
