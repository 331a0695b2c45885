#include "host/job/cover_sheet.h"

#include "driver/pages/stored_mark.h"
#include "host/job/cover_sheet_form.h"
#include "host/settings/texts.h"
#include "platform/foundation/DateTimeUtils.h"
#include "platform/foundation/text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <span>

namespace {

struct SheetSize {
    double width;
    double height;
};
constexpr SheetSize kLetter{612, 792};
constexpr SheetSize kA4{595, 842};

/// The sizes that notes are tried in; smaller ones get lost in the coarse mode of a fax.
constexpr std::array kNotesSizes{kTextSize, 11.0, 10.0, 9.0};
/// What notes may take of the room when there are more recipients than fit, too.
constexpr double kNotesShare = 0.5;

/// More ink behind the text would make it hard to read once the fax has turned grays into dots.
constexpr double kMostWatermarkInk = 0.15;

/// Numbers keep their order in a line of another direction: between Unicode's isolating marks.
std::string isolated(const std::string& number) {
    return "\u2066" + number + "\u2069";
}

class CoverSheetMaker {
public:
    CoverSheetMaker(const FaxInstruction& fax, std::int64_t pageCount, CFBundleRef texts)
        : content_(*fax.coverSheet),
          recipients_(content_.hasRecipients ? std::span(fax.recipients) : std::span<const FaxRecipientInstruction>()),
          pageCount_(pageCount),
          texts_(texts),
          labels_(completeLabels()),
          form_(text(CFSTR("Cover Sheet Title")), size().width, size().height, RunsRightToLeft(labels_.from)) {}

    CoverSheet make() {
        form_.fitLabels({labels_.to, labels_.from, labels_.phone, labels_.fax, text(CFSTR("Cover Sheet E-Mail")),
                         text(CFSTR("Cover Sheet Date")), text(CFSTR("Cover Sheet Pages"))});
        drawWatermark();
        const auto picture = readPicture();
        form_.drawHead(text(CFSTR("Cover Sheet Title")), picture ? &*picture : nullptr);

        const auto sender = senderSection();
        const auto facts = factsSection();
        const bool hasNotes = !content_.notes.empty();
        const double room = form_.room() - CoverSheetForm::heightOf(sender) - CoverSheetForm::heightOf(facts);
        form_.draw(recipientsSection(room - std::min(leastNotesHeight(), room * kNotesShare)), false);
        form_.draw(sender, false);
        form_.draw(facts, !hasNotes);
        if (hasNotes) {
            drawNotes();
        }
        return {form_.page().finish(), std::move(faults_)};
    }

private:
    SheetSize size() const { return content_.paperSize == "A4" ? kA4 : kLetter; }
    std::string text(CFStringRef key) const { return utf8Text(localized(texts_, key).get()); }
    std::string text(CFStringRef key, std::int64_t number) const {
        return utf8Text(localized(texts_, key, std::to_string(number)).get());
    }

    FaxCoverInstruction::Labels completeLabels() const {
        const auto or_ = [this](const std::string& label, CFStringRef key) {
            return label.empty() ? text(key) : label;
        };
        const auto& given = content_.labels;
        return {or_(given.to, CFSTR("Cover Sheet To")), or_(given.from, CFSTR("Cover Sheet From")),
                or_(given.phone, CFSTR("Cover Sheet Phone")), or_(given.fax, CFSTR("Cover Sheet Fax")),
                or_(given.notes, CFSTR("Cover Sheet Notes"))};
    }

    // ---- Sections

    CoverSheetForm::Section senderSection() const {
        CoverSheetForm::Section section;
        if (!content_.sender) {
            return section;
        }
        const auto& sender = *content_.sender;
        const std::array<std::pair<std::string, std::string>, 5> rows{{
            {labels_.from, sender.name},
            {sender.name.empty() ? labels_.from : "", sender.organization},
            {labels_.phone, sender.phone.empty() ? "" : isolated(sender.phone)},
            {labels_.fax, sender.fax.empty() ? "" : isolated(sender.fax)},
            {text(CFSTR("Cover Sheet E-Mail")), sender.email},
        }};
        for (const auto& [label, value] : rows) {
            if (!value.empty()) {
                section.push_back(form_.makeRow(label, value, 2));
            }
        }
        return section;
    }

    CoverSheetForm::Section factsSection() const {
        LongDateTime now = 0;
        GetDateTime(&now);
        const auto date = CFRef<CFStringRef>::adopt(LongDateCopyString(&now));
        CoverSheetForm::Section section;
        section.push_back(form_.makeRow(text(CFSTR("Cover Sheet Date")), utf8Text(date.get()), 1));
        section.push_back(
            form_.makeRow(text(CFSTR("Cover Sheet Pages")), text(CFSTR("Cover Sheet Page Count"), pageCount_), 1));
        return section;
    }

    CoverSheetForm::Section recipientsSection(double room) const {
        return content_.recipientText.empty() ? listSection(room) : ownTextSection(room);
    }

    CoverSheetForm::Row recipientRow(std::size_t index) const {
        const auto& recipient = recipients_[index];
        const std::string& label = index == 0 ? labels_.to : std::string();
        std::string name = recipient.name;
        if (!name.empty() && !recipient.organization.empty()) {
            name += ", ";
        }
        name += recipient.organization;
        const int mostLines = recipients_.size() > 1 ? 1 : 2;
        if (recipient.typedNumber.empty()) {
            return form_.makeRow(label, name, mostLines);
        }
        const std::string number = labels_.fax + " " + isolated(recipient.typedNumber);
        return name.empty() ? form_.makeRow(label, number, 1) : form_.makeRow(label, name, number, mostLines);
    }

    CoverSheetForm::Section listSection(double room) const {
        const std::size_t count = recipients_.size();
        CoverSheetForm::Section section;
        while (section.size() < count) {
            section.push_back(recipientRow(section.size()));
            if (section.size() > 1 && CoverSheetForm::heightOf(section) > room) {
                break;
            }
        }
        // The last line is for the number of those that are left out.
        const auto moreRow = [&] {
            return form_.makeRow(
                "", text(CFSTR("Cover Sheet More Recipients"), static_cast<std::int64_t>(count - section.size())), 1);
        };
        if (CoverSheetForm::heightOf(section) > room && section.size() > 1) {
            section.pop_back();
            section.pop_back();
            section.push_back(moreRow());
        }
        return section;
    }

    CoverSheetForm::Section ownTextSection(double room) const {
        CoverSheetForm::Section section;
        section.push_back(form_.makeRow(labels_.to, content_.recipientText, kAnyLines));
        if (CoverSheetForm::heightOf(section) > room) {
            auto mark = form_.makeRow("", text(CFSTR("Cover Sheet Text Left Out")), 2);
            const double textHeight = section[0].value.height();
            section.push_back(std::move(mark));
            const double excess = CoverSheetForm::heightOf(section) - room;
            section[0].value.keep(std::max(1, section[0].value.linesWithin(textHeight - excess)));
        }
        return section;
    }

    // ---- Notes

    double leastNotesHeight() const {
        return content_.notes.empty() ? 0
                                      : form_.makeHeading(labels_.notes).height() +
                                            form_.makeText(content_.notes, kNotesSizes.back()).height();
    }

    void drawNotes() {
        form_.draw(form_.makeHeading(labels_.notes));
        for (const double size : kNotesSizes) {
            const TextBlock notes = form_.makeText(content_.notes, size);
            if (notes.height() <= form_.room()) {
                form_.draw(notes);
                return;
            }
        }
        const TextBlock mark = form_.makeText(text(CFSTR("Cover Sheet Text Left Out")), kTextSize);
        TextBlock notes = form_.makeText(content_.notes, kNotesSizes.back());
        notes.keep(notes.linesWithin(form_.room() - 2 * mark.height()));
        form_.draw(notes);
        form_.draw(mark);
    }

    // ---- Pictures

    std::optional<Picture> readFile(const std::string& path) {
        std::string reason;
        auto picture = Picture::read(path, PictureInk::grays, &reason);
        if (!picture) {
            faults_.push_back(path + ": " + reason);
        }
        return picture;
    }

    std::optional<StoredMark> readMark(MarkStore store, const std::string& name) {
        if (name.empty()) {
            return std::nullopt;
        }
        std::string reason;
        auto mark = readStoredMark(store, name, &reason);
        if (!mark) {
            faults_.push_back(name + ": " + reason);
        }
        return mark;
    }

    std::optional<Picture> readPicture() {
        const auto mark = readMark(MarkStore::faxPictures, content_.image);
        return mark ? readFile(mark->filePath) : std::nullopt;
    }

    void drawWatermark() {
        const auto mark = readMark(MarkStore::watermarks, content_.watermark);
        if (!mark) {
            return;
        }
        const double ink = std::min(mark->density / 100, kMostWatermarkInk);
        const double x = form_.pageWidth() / 2 + mark->xOffset;
        const double y = form_.pageHeight() / 2 - mark->yOffset;
        if (!mark->text.empty()) {
            const double longest = std::hypot(form_.pageWidth(), form_.pageHeight()) * 0.8;
            form_.page().drawAround(mark->text, mark->fontName, mark->fontSize * mark->scale / 100, x, y, mark->angle,
                                    ink, longest);
        } else if (const auto picture = readFile(mark->filePath)) {
            const double scale = std::min(
                {mark->scale / 100, form_.pageWidth() / picture->width(), form_.pageHeight() / picture->height()});
            form_.page().drawAround(picture->lightened(ink), picture->width() * scale, picture->height() * scale, x, y,
                                    mark->angle);
        }
    }

    const FaxCoverInstruction& content_;
    std::span<const FaxRecipientInstruction> recipients_;
    std::int64_t pageCount_;
    CFBundleRef texts_;
    FaxCoverInstruction::Labels labels_;
    CoverSheetForm form_;
    std::vector<std::string> faults_;
};

}  // namespace

CoverSheet drawCoverSheet(const FaxInstruction& fax, std::int64_t pageCount, CFBundleRef texts) {
    return CoverSheetMaker(fax, pageCount, texts).make();
}
