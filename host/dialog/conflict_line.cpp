#include "host/dialog/conflict_line.h"

#include "driver/instructions/read_instructions.h"
#include "host/dialog/notice.h"
#include "host/script/panels.h"
#include "host/script/stage.h"
#include "host/settings/remedy_words.h"
#include "host/settings/texts.h"
#include "platform/foundation/text.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr std::size_t kMostSentences = 4;  // in a notice

/// A title in which '&' marks no key.
CFRef<CFStringRef> literal(std::string title) {
    for (std::size_t at = 0; (at = title.find('&', at)) != std::string::npos; at += 2) {
        title.insert(at, 1, '&');
    }
    return makeString(title);
}

}  // namespace

ConflictLine::ConflictLine(WindowRef window, CFBundleRef texts, std::int64_t pageCount, JobWay way)
    : window_(window), texts_(texts), pageCount_(pageCount), way_(way), marks_(window, texts), changes_(texts) {}

void ConflictLine::forget() {
    options_.clear();
    job_ = {};
    changed_.clear();
    changes_.forget();
    report_ = {};
    remedies_ = {};
    leftOut_.clear();
    told_.clear();
    marks_.show({});
    showReport();
}

/// False when everything is as it was shown.
bool ConflictLine::takeChanges(const PrintSession& session) {
    OptionsThen options = optionsNow(session);
    const bool isSecret = readJobKind(session.printSettings()) == JobKind::secure;
    if (options == options_ && isSecret == isSecret_) {
        return false;
    }
    OptionsThen changes;
    std::ranges::set_difference(options, options_, std::back_inserter(changes));
    if (!options_.empty() && !changes.empty()) {
        changed_.clear();
        std::ranges::transform(changes, std::back_inserter(changed_), [](const auto& change) { return change.first; });
    }
    options_ = std::move(options);
    isSecret_ = isSecret;
    return true;
}

void ConflictLine::lookForChanges(const PrintSession& session) {
    const SInt32 panel = script::shownPanel(window_);
    changes_.look(session, panel, script::panelTitle(window_, panel));
}

void ConflictLine::show(const PrintSession& session) {
    session.instructions();
    const JobThen job{session.version(), pageCount_};
    const bool isChanged = takeChanges(session) || job != job_;
    if (isChanged) {
        job_ = job;
        report_ = examineConflicts(session, texts_, changed_, pageCount_);
        remedies_ = {};
        for (std::size_t i = 0; i < std::min(report_.ways.size(), remedies_.size()); ++i) {
            remedies_[i] = {report_.ways[i]};
        }
        if (report_.ways.empty()) {
            remedies_[0] = report_.remedy;
        }
    }
    marks_.show(report_.conflicts);  // also at controls that have just been made
    std::vector<std::string> leftOut = tellLeftOut(session, pageCount_, way_, texts_);
    if (isChanged || leftOut != leftOut_ || changes_.sentence() != told_) {
        leftOut_ = std::move(leftOut);
        told_ = changes_.sentence();
        showReport();
    }
}

void ConflictLine::showReport() const {
    std::vector<std::string> sentences = report_.sentences();
    sentences.insert(sentences.end(), leftOut_.begin(), leftOut_.end());
    std::string line = told_;
    if (!sentences.empty()) {
        line += (line.empty() ? "" : " ") + firstOf(sentences, texts_);
    }
    const ControlRef text = hostControl(window_, kConflictText);
    const bool isNews = !line.empty() && script::textOf(text) != line;
    setStaticText(text, makeString(line));
    SetControlVisibility(text, !line.empty(), true);
    const ControlRef sign = hostControl(window_, kConflictSign);
    SetControlAlert(sign, makeString(report_.conflicts.empty() ? "" : report_.conflicts.front().sentence).get());
    SetControlVisibility(sign, !report_.conflicts.empty(), true);
    SetControlVisibility(hostControl(window_, kUndoChange), !told_.empty(), true);
    showButton(kConflictButton, remedies_[0]);
    showButton(kOtherRemedy, remedies_[1]);
    if (isNews) {
        AnnounceControl(text);
    }
}

void ConflictLine::showButton(HostControl number, const std::vector<SettingChange>& changes) const {
    const ControlRef button = hostControl(window_, number);
    if (!changes.empty()) {
        SetControlTitleWithCFString(button, literal(shortened(nameOfChanges(changes, texts_))).get());
        HMSetControlHelpContent(button, makeString(listOfChanges(changes, texts_)).get());
    }
    SetControlVisibility(button, !changes.empty(), true);
}

void ConflictLine::goToConflict() const {
    if (!report_.conflicts.empty()) {
        marks_.goTo(report_.conflicts.front());
    }
}

std::vector<SettingChange> ConflictLine::takeRemedy(HostControl button) {
    changes_.forget();
    return remedies_[button == kConflictButton ? 0 : 1];
}

ConflictLine::Answer ConflictLine::askAboutConflicts() const {
    if (report_.conflicts.empty()) {
        return Answer::print;
    }
    std::vector<std::string> sentences = report_.sentences();
    if (sentences.size() > kMostSentences) {
        const std::size_t more = sentences.size() - kMostSentences;
        sentences.resize(kMostSentences);
        sentences.push_back(utf8Text(localized(texts_, CFSTR("Conflict Notice More"), std::to_string(more)).get()));
    }
    const auto& remedy = report_.remedy;
    const std::string name = remedy.empty() ? std::string() : nameOfChanges(remedy, texts_);
    const std::string message =
        listed(texts_, sentences) + "\n\n" +
        utf8Text(remedy.empty()
                     ? localized(texts_, CFSTR("Conflict Notice No Remedy")).get()
                     : localized(texts_, CFSTR("Conflict Notice Remedy"), {name, listOfChanges(remedy, texts_)}).get());
    switch (askDespiteNotice(localized(texts_, CFSTR("Conflict Notice Header")), makeString(message),
                             localized(texts_, CFSTR("Conflict Notice Back")),
                             localized(texts_, CFSTR("Conflict Notice Print")),
                             remedy.empty() ? CFRef<CFStringRef>() : makeString(name))) {
        case NoticeAnswer::goOn:
            return Answer::print;
        case NoticeAnswer::putRight:
            return Answer::printWithRemedy;
        default:
            break;
    }
    if (!remedy.empty()) {
        SetKeyboardFocus(window_, hostControl(window_, kConflictButton));
    }
    return Answer::goBack;
}
