#include "driver/job/instruction_values.h"
#include "host/job/settings_warnings.h"
#include "host/report/json_document.h"
#include "host/report/report.h"
#include "host/settings/choice_words.h"
#include "host/settings/conflicts.h"
#include "host/settings/dictionary_values.h"
#include "host/settings/left_out.h"
#include "host/settings/paper_words.h"
#include "host/settings/setting_words.h"
#include "host/settings/summary.h"
#include "platform/foundation/terminal_text.h"
#include "platform/foundation/text.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace {

/// Of more sheets only the number is told: a slip in a settings file can ask for millions.
constexpr std::size_t kMostSheets = 100'000;

/// The main keywords of what is done with each set; and the options that do nothing.
constexpr std::array kFinishing{"StapleLocation", "TRFoldOptions", "TRStaple",  "TRPunch",
                                "TRFold",         "TRBind",        "TRBooklet", "Jog"};
constexpr std::array<std::string_view, 3> kNothing{"", "None", "False"};

bool isNothing(std::string_view option) {
    return std::ranges::find(kNothing, option) != kNothing.end();
}

template <typename Value>
struct NameRow {
    Value value;
    const char* name;
};
constexpr std::array kJobKinds{
    // kind, name
    NameRow<JobKind>{JobKind::print, "print"},
    NameRow<JobKind>{JobKind::save, "save"},
    NameRow<JobKind>{JobKind::printAndSave, "printAndSave"},
    NameRow<JobKind>{JobKind::fax, "fax"},
    NameRow<JobKind>{JobKind::secure, "secure"},
    NameRow<JobKind>{JobKind::delayed, "delayed"},
    NameRow<JobKind>{JobKind::sampleSet, "sampleSet"},
};
constexpr std::array kSheetKinds{
    // kind, name
    NameRow<SheetKind>{SheetKind::document, "document"},   NameRow<SheetKind>{SheetKind::cover, "cover"},
    NameRow<SheetKind>{SheetKind::insert, "insert"},       NameRow<SheetKind>{SheetKind::separator, "separator"},
    NameRow<SheetKind>{SheetKind::slipSheet, "slipSheet"}, NameRow<SheetKind>{SheetKind::faxCover, "faxCover"},
    NameRow<SheetKind>{SheetKind::banner, "banner"},
};

template <typename Rows, typename Value>
QString nameOf(const Rows& rows, Value value) {
    return QString::fromLatin1(std::ranges::find_if(rows, [=](const auto& row) { return row.value == value; })->name);
}

/// The document of a check.
class Check {
public:
    Check(const JobSetup& setup, const PrintSession& session, const ConflictReport& conflicts, CFBundleRef texts)
        : setup_(setup), session_(session), conflicts_(conflicts), job_(session.instructions()), texts_(texts) {}

    QJsonObject make() const {
        const std::int64_t pageCount = setup_.document.pageCount;
        std::vector<std::string> leftOut = tellLeftOut(session_, pageCount, setup_.target.way, texts_);
        std::ranges::move(tellJobFaults(session_, setup_.target.way, texts_), std::back_inserter(leftOut));
        QJsonObject document{{QStringLiteral("printer"), printer()},
                             {QStringLiteral("document"), QJsonValue(QJsonValue::Null)},
                             {QStringLiteral("notOffered"), notOffered()},
                             {QStringLiteral("conflicts"), conflicts()},
                             {QStringLiteral("remedy"), changes(conflicts_.remedy)},
                             {QStringLiteral("leftOut"), jsonTexts(leftOut)},
                             {QStringLiteral("summary"), jsonTexts(summarize(session_, pageCount, texts_))},
                             {QStringLiteral("settings"), settings()},
                             {QStringLiteral("job"), job()},
                             {QStringLiteral("plan"), QJsonValue(QJsonValue::Null)}};
        if (pageCount > 0) {
            document[QStringLiteral("document")] =
                QJsonObject{{QStringLiteral("name"), jsonText(setup_.document.name)},
                            {QStringLiteral("pageCount"), static_cast<qint64>(pageCount)}};
            document[QStringLiteral("plan")] = plan(session_.plan(pageCount));
        }
        return document;
    }

private:
    QJsonObject printer() const {
        const Printer& printer = session_.printer();
        return {{QStringLiteral("name"), jsonText(printer.name())},
                {QStringLiteral("queue"),
                 printer.queue().empty() ? QJsonValue(QJsonValue::Null) : QJsonValue(jsonText(printer.queue()))}};
    }

    /// What is secret is only said to be set.
    QJsonObject setting(const std::string& keyword, const std::string& option) const {
        QJsonObject setting{{QStringLiteral("keyword"), jsonText(keyword)}};
        const bool isSecret =
            !isNothing(option) && PMSettingIsSecret(session_.printer().get(), makeString(keyword).get());
        if (isSecret) {
            setting[QStringLiteral("isSecret")] = true;
        } else {
            setting[QStringLiteral("option")] = jsonText(option);
        }
        if (const auto words = settingWords(session_, texts_, keyword, option)) {
            setting[QStringLiteral("title")] = jsonText(words->title);
            if (!isSecret) {
                setting[QStringLiteral("text")] = jsonText(words->choice);
            }
        }
        return setting;
    }

    QJsonArray notOffered() const {
        QJsonArray array;
        for (const std::string& choice : session_.choicesNotOffered()) {
            const std::size_t equals = choice.find('=');
            array.append(setting(choice.substr(0, equals), choice.substr(equals + 1)));
        }
        return array;
    }

    QJsonArray conflicts() const {
        QJsonArray array;
        for (const Conflict& conflict : conflicts_.conflicts) {
            QJsonArray chosen;
            for (const auto& [keyword, option] : conflict.chosen) {
                chosen.append(setting(keyword, option));
            }
            array.append(QJsonObject{{QStringLiteral("text"), jsonText(conflict.sentence)},
                                     {QStringLiteral("settings"), chosen}});
        }
        return array;
    }

    QJsonArray changes(const std::vector<SettingChange>& all) const {
        QJsonArray array;
        for (const SettingChange& change : all) {
            array.append(setting(change.mainKeyword, change.option));
        }
        return array;
    }

    QJsonArray settings() const {
        CFMutableDictionaryRef pairs = nullptr;
        PMTicketGetPPDDict(session_.printSettings(), kPMTopLevel, &pairs);
        auto chosen = pairsIn(pairs);
        std::ranges::sort(chosen);
        QJsonArray array;
        for (const auto& [keyword, option] : chosen) {
            array.append(setting(keyword, option));
        }
        return array;
    }

    QJsonObject job() const {
        QJsonObject job{{QStringLiteral("kind"), nameOf(kJobKinds, job_.kind)}};
        if (job_.kind == JobKind::delayed && job_.printTime) {
            job[QStringLiteral("printTime")] = jsonText(momentText(*job_.printTime));
        }
        if (job_.fax) {
            job[QStringLiteral("recipientCount")] = static_cast<qint64>(job_.fax->recipients.size());
        }
        return job;
    }

    QJsonArray finishing() const {
        QJsonArray array;
        for (const char* const keyword : kFinishing) {
            const std::string option = session_.choice(CFStringMakeConstant(keyword));
            if (!isNothing(option)) {
                array.append(setting(keyword, option));
            }
        }
        return array;
    }

    QJsonValue tray() const {
        const std::string option = session_.choice(CFSTR("OutputBin"));
        const auto words = settingWords(session_, texts_, "OutputBin", option);
        return option.empty() ? QJsonValue(QJsonValue::Null) : jsonChoice(option, words ? words->choice : option);
    }

    QJsonObject plan(const SheetPlan& plan) const {
        std::vector<QJsonObject> papers;
        for (const Paper& paper : plan.papers) {
            papers.push_back(paperObject(paper));
        }
        QJsonArray sheets;
        for (std::size_t i = 0; i < std::min(plan.sheets.size(), kMostSheets); ++i) {
            sheets.append(sheet(plan, plan.sheets[i], papers[plan.sheets[i].paper]));
        }
        return {{QStringLiteral("copies"), plan.copies},
                {QStringLiteral("isCollated"), plan.isCollated},
                {QStringLiteral("pageCount"), static_cast<qint64>(plan.pageCount)},
                {QStringLiteral("sheetCount"), static_cast<qint64>(plan.sheets.size())},
                {QStringLiteral("hasBanner"), plan.hasBanner},
                {QStringLiteral("sheets"), sheets},
                {QStringLiteral("finishing"), finishing()},
                {QStringLiteral("finishings"), jsonTexts(finishingsOf(job_.finishing.value))},
                {QStringLiteral("tray"), tray()}};
    }

    /// What a paper does not say is the printer's default.
    QJsonObject paperObject(const Paper& said) const {
        Paper paper = said;
        for (const auto& [keyword, part] :
             {std::pair{"PageSize", &Paper::size}, {"MediaColor", &Paper::color}, {"MediaType", &Paper::type}}) {
            if ((paper.*part).empty()) {
                paper.*part = session_.choice(CFStringMakeConstant(keyword));
            }
        }
        PMPaper size{};
        const bool isKnown = PMPrinterGetPaper(session_.printer().get(), makeString(paper.size).get(), &size) == noErr;
        return jsonPaper(paperFacts(paper, session_, texts_),
                         isKnown ? std::optional(Size{size.width, size.height}) : std::nullopt, texts_);
    }

    static QJsonObject side(const SheetPlan& plan, const SheetSide& side) {
        QJsonArray pages;
        for (const std::int32_t cell : plan.cellsOf(side)) {
            pages.append(cell == kBlankCell ? QJsonValue(QJsonValue::Null) : QJsonValue(cell + 1));
        }
        QJsonObject object{{QStringLiteral("isBlank"), plan.isBlank(side)}, {QStringLiteral("pages"), pages}};
        if (const auto lightness = plan.treatments[side.treatment].lightenDarken) {
            object[QStringLiteral("lightness")] = *lightness;
        }
        return object;
    }

    static QJsonObject sheet(const SheetPlan& plan, const Sheet& sheet, const QJsonObject& paper) {
        QJsonArray sides{side(plan, sheet.side1)};
        if (sheet.sides != Sides::one) {
            sides.append(side(plan, sheet.side2));
        }
        return {{QStringLiteral("kind"), nameOf(kSheetKinds, sheet.kind)},
                {QStringLiteral("paper"), paper},
                {QStringLiteral("sides"), sides},
                {QStringLiteral("flip"), jsonFlip(sheet.sides != Sides::one, sheet.sides == Sides::shortEdge)},
                {QStringLiteral("isOffset"), sheet.beginsSubset}};
    }

    const JobSetup& setup_;
    const PrintSession& session_;
    const ConflictReport& conflicts_;
    const JobInstructions& job_;
    CFBundleRef texts_;
};

}  // namespace

Failure reportCheck(const JobSetup& setup, CFBundleRef texts, ReportForm form) {
    PrintSession session(setup.printer, setup.settings, setup.installedOptions.get(), setup.document.name);
    followDocument(&session, setup.document);
    const ConflictReport report = examineConflicts(session, texts, {}, setup.document.pageCount);
    if (form == ReportForm::json) {
        printDocument("check", Check(setup, session, report, texts).make());
    } else {
        warnOfChoicesNotOffered(session);
        for (const Conflict& conflict : report.conflicts) {
            printLine(stdout, conflict.sentence);
        }
    }
    return {report.conflicts.empty() ? ExitStatus::success : ExitStatus::unusableInput, {}};
}
