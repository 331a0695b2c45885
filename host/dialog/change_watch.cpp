#include "host/dialog/change_watch.h"

#include "host/settings/preset_content.h"
#include "host/settings/setting_place.h"
#include "host/settings/texts.h"
#include "platform/foundation/text.h"

#include <algorithm>

void ChangeWatch::look(const PrintSession& session, SInt32 panel, const std::string& title) {
    Moment now{optionsNow(session), session.copySettings(), panel};
    const std::vector<ControlID> used = std::exchange(used_, {});
    if (!sentence_.empty() && !isSamePreset(now.settings, last_->settings)) {
        before_.reset();
        sentence_.clear();
    }
    const bool isByPanel = last_ && panel != last_->panel;
    if (last_ && (!used.empty() || isByPanel)) {
        const std::string changes = tellChanges(session, texts_, last_->options, [&](std::string_view mainKeyword) {
            return std::ranges::any_of(used, [&](const ControlID& control) {
                return isChangedBy(mainKeyword, control.signature, control.id);
            });
        });
        if (!changes.empty()) {
            sentence_ = utf8Text(isByPanel ? localized(texts_, CFSTR("Changed by Panel"), {title, changes}).get()
                                           : localized(texts_, CFSTR("Changed Too"), changes).get());
            before_ = {last_->settings, last_->panel, isByPanel ? std::nullopt : std::optional(used.back())};
        }
    }
    last_ = std::move(now);
}

void ChangeWatch::forget() {
    used_.clear();
    last_.reset();
    before_.reset();
    sentence_.clear();
}

ChangeWatch::Before ChangeWatch::takeBack() {
    Before before = *before_;
    forget();
    return before;
}
