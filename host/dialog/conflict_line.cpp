#include "host/dialog/conflict_line.h"

#include "driver/instructions/read_instructions.h"
#include "host/dialog/notice.h"
#include "host/settings/dictionary_values.h"
#include "host/settings/texts.h"

#include <algorithm>

namespace {

constexpr std::size_t kMostSentences = 4;  // in a notice

}  // namespace

ConflictLine::ConflictLine(WindowRef window, CFBundleRef texts, std::int64_t pageCount, JobWay way)
    : window_(window), texts_(texts), pageCount_(pageCount), way_(way) {}

void ConflictLine::forget() {
    choices_.clear();
    changed_.clear();
    report_ = {};
    leftOut_.clear();
    showReport();
}

/// False when everything is as it was shown.
bool ConflictLine::takeChanges(const PrintSession& session) {
    CFMutableDictionaryRef pairs = nullptr;
    PMTicketGetPPDDict(session.printSettings(), kPMTopLevel, &pairs);
    Choices choices = pairsIn(pairs);
    std::ranges::sort(choices);
    const bool isSecret = readJobKind(session.printSettings()) == JobKind::secure;
    if (choices == choices_ && isSecret == isSecret_) {
        return false;
    }
    Choices changes;
    std::ranges::set_difference(choices, choices_, std::back_inserter(changes));
    if (!choices_.empty() && !changes.empty()) {
        changed_.clear();
        std::ranges::transform(changes, std::back_inserter(changed_), [](const auto& change) { return change.first; });
    }
    choices_ = std::move(choices);
    isSecret_ = isSecret;
    return true;
}

void ConflictLine::show(const PrintSession& session) {
    const bool isChanged = takeChanges(session);
    if (isChanged) {
        report_ = examineConflicts(session, texts_, changed_);
    }
    std::vector<std::string> leftOut = tellLeftOut(session, pageCount_, way_, texts_);
    if (isChanged || leftOut != leftOut_) {
        leftOut_ = std::move(leftOut);
        showReport();
    }
}

void ConflictLine::showReport() const {
    const ControlRef text = hostControl(window_, kConflictText);
    const ControlRef button = hostControl(window_, kConflictButton);
    std::vector<std::string> sentences = report_.sentences;
    sentences.insert(sentences.end(), leftOut_.begin(), leftOut_.end());
    const bool hasRemedy = !report_.remedy.empty();
    if (!sentences.empty()) {
        setStaticText(text, cfString(firstOf(sentences, texts_)));
    }
    if (hasRemedy) {
        SetControlTitleWithCFString(button, cfString(remedyTitle(report_, texts_)).get());
        HMSetControlHelpContent(button, cfString(remedyText(report_, texts_)).get());
    }
    SetControlVisibility(text, !sentences.empty(), true);
    SetControlVisibility(button, hasRemedy, true);
}

bool ConflictLine::acceptConflicts() const {
    if (report_.sentences.empty()) {
        return true;
    }
    std::vector<std::string> sentences = report_.sentences;
    if (sentences.size() > kMostSentences) {
        const std::size_t more = sentences.size() - kMostSentences;
        sentences.resize(kMostSentences);
        sentences.push_back(utf8(localized(texts_, CFSTR("Conflict Notice More"), std::to_string(more)).get()));
    }
    std::string message = listed(texts_, sentences);
    message +=
        "\n\n" + utf8(report_.remedy.empty()
                          ? localized(texts_, CFSTR("Conflict Notice No Remedy")).get()
                          : localized(texts_, CFSTR("Conflict Notice Remedy"), remedyText(report_, texts_)).get());
    if (goesOnDespiteNotice(localized(texts_, CFSTR("Conflict Notice Header")), cfString(message),
                            localized(texts_, CFSTR("Conflict Notice Back")),
                            localized(texts_, CFSTR("Conflict Notice Print")))) {
        return true;
    }
    if (!report_.remedy.empty()) {
        SetKeyboardFocus(window_, hostControl(window_, kConflictButton));
    }
    return false;
}
