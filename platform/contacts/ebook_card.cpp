#include "platform/contacts/ebook_card.h"

#include "platform/contacts/take_apart.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <utility>

#include <libebook/libebook.h>

namespace {

struct LabelTypes {
    std::string_view attribute;
    std::string_view label;
    std::initializer_list<const char*> types;
};

// How labels are written, and read by the first row whose types are all there (VOICE is what says nothing else):
// attribute, label, values of TYPE.
constexpr LabelTypes kLabelTypes[] = {
    {"TEL", "WorkFAX", {"WORK", "FAX"}}, {"TEL", "HomeFAX", {"HOME", "FAX"}}, {"TEL", "OtherFAX", {"FAX"}},
    {"TEL", "Mobile", {"CELL"}},         {"TEL", "Pager", {"PAGER"}},         {"TEL", "Work", {"WORK", "VOICE"}},
    {"TEL", "Home", {"HOME", "VOICE"}},  {"EMAIL", "Work", {"WORK"}},         {"EMAIL", "Home", {"HOME"}},
};
static_assert(std::size(kLabelTypes) == 9);

constexpr std::string_view kUuidAddress = "urn:uuid:";
constexpr const char* kListMember = EVC_X_DEST_CONTACT_UID;

std::string taken(char* text) {
    std::string result = text ? text : "";
    g_free(text);
    return result;
}

/// All values, should somebody have forgotten to escape a semicolon.
std::string wholeValue(EVCardAttribute* attribute) {
    std::string whole;
    for (GList* value = e_vcard_attribute_get_values(attribute); value; value = value->next) {
        whole += static_cast<const char*>(value->data);
        whole += value->next ? ";" : "";
    }
    return whole;
}

void append(EVCard* card, const char* attribute, const std::string& text,
            std::initializer_list<const char*> types = {}) {
    EVCardAttribute* made = e_vcard_attribute_new(nullptr, attribute);
    e_vcard_attribute_add_value(made, text.c_str());
    if (types.size() > 0) {
        EVCardAttributeParam* parameter = e_vcard_attribute_param_new(EVC_TYPE);
        for (const char* type : types) {
            e_vcard_attribute_param_add_value(parameter, type);
        }
        e_vcard_attribute_add_param(made, parameter);
    }
    e_vcard_append_attribute(card, made);
}

bool isSameWord(const char* left, const char* right) {
    return g_ascii_strcasecmp(left, right) == 0;
}

/// Calls `use` with each attribute of the name.
template <typename Use>
void forEach(EVCard* card, const char* attribute, Use use) {
    for (GList* each = e_vcard_get_attributes(card); each; each = each->next) {
        auto* candidate = static_cast<EVCardAttribute*>(each->data);
        if (isSameWord(e_vcard_attribute_get_name(candidate), attribute)) {
            use(candidate);
        }
    }
}

/// Of the first attribute of the name that says anything.
std::string firstValue(EVCard* card, const char* attribute) {
    std::string first;
    forEach(card, attribute, [&](EVCardAttribute* found) {
        const GList* values = e_vcard_attribute_get_values(found);
        first = first.empty() && values ? static_cast<const char*>(values->data) : first;
    });
    return first;
}

/// RFC 6350 names members by URI.
std::string memberAddress(const std::string& uniqueId) {
    return g_uuid_string_is_valid(uniqueId.c_str()) ? std::string(kUuidAddress) + uniqueId : uniqueId;
}

std::vector<std::string> typesOf(EVCardAttribute* attribute) {
    std::vector<std::string> types;
    for (GList* value = e_vcard_attribute_get_param(attribute, EVC_TYPE); value; value = value->next) {
        types.emplace_back(static_cast<const char*>(value->data));
    }
    return types;
}

/// A program's own label stands in an attribute of the same group: "item1.TEL" and "item1.X-ABLabel". The names that
/// its author did not choose are in brackets: "_$!<HomeFAX>!$_".
std::string ownLabel(EVCard* card, EVCardAttribute* attribute) {
    const char* group = e_vcard_attribute_get_group(attribute);
    std::string label;
    if (group) {
        forEach(card, "X-ABLabel", [&](EVCardAttribute* candidate) {
            const char* other = e_vcard_attribute_get_group(candidate);
            if (other && isSameWord(group, other)) {
                label = wholeValue(candidate);
            }
        });
    }
    constexpr std::string_view kOpening = "_$!<";
    constexpr std::string_view kClosing = ">!$_";
    if (label.size() > kOpening.size() + kClosing.size() && label.starts_with(kOpening) && label.ends_with(kClosing)) {
        label = label.substr(kOpening.size(), label.size() - kOpening.size() - kClosing.size());
    }
    return label;
}

std::string labelOf(EVCard* card, EVCardAttribute* attribute, std::string_view name) {
    if (std::string label = ownLabel(card, attribute); !label.empty()) {
        return label;
    }
    const std::vector<std::string> types = typesOf(attribute);
    const auto* row = std::find_if(std::begin(kLabelTypes), std::end(kLabelTypes), [&](const LabelTypes& candidate) {
        return candidate.attribute == name &&
               std::all_of(candidate.types.begin(), candidate.types.end(), [&](const char* wanted) {
                   return isSameWord(wanted, "VOICE") ||
                          std::any_of(types.begin(), types.end(),
                                      [wanted](const std::string& type) { return isSameWord(wanted, type.c_str()); });
               });
    });
    return row == std::end(kLabelTypes) ? std::string() : std::string(row->label);
}

/// Version 4.0 writes numbers and addresses as URIs.
std::string withoutScheme(const std::string& text) {
    for (const std::string_view scheme : {"tel:", "mailto:"}) {
        if (g_ascii_strncasecmp(text.c_str(), scheme.data(), scheme.size()) == 0) {
            return text.substr(scheme.size());
        }
    }
    return text;
}

std::string fullName(const Card& person) {
    const std::string given = person.namePart(NamePart::Given).value_or("");
    const std::string family = person.namePart(NamePart::Family).value_or("");
    return given + (given.empty() || family.empty() ? "" : " ") + family;
}

/// Where a card has no name to be shown by, the format still asks for one.
std::string shownName(EVCard* card, const std::array<std::string, 5>& name) {
    const std::string& family = name[0];
    const std::string& given = name[1];
    const std::string whole = given + (given.empty() || family.empty() ? "" : " ") + family;
    for (const std::string& text : {whole, firstValue(card, EVC_ORG), firstValue(card, EVC_EMAIL)}) {
        if (!text.empty()) {
            return text;
        }
    }
    return firstValue(card, EVC_TEL);
}

}  // namespace

void EbookCard::Releaser::operator()(EVCard* card) const {
    g_object_unref(card);
}

EbookCard::EbookCard() : card_(e_vcard_new()) {
    append(card_.get(), EVC_UID, taken(g_uuid_string_random()));
}

EbookCard::EbookCard(const std::string& text) : card_(takeApart(text)) {}

EVCard* EbookCard::card() const {
    if (!card_) {
        card_.reset(takeApart(std::exchange(written_, {}).text));
    }
    return card_.get();
}

void EbookCard::keepAsText() {
    if (card_) {
        written_ = {text(), uniqueId(), isGroup()};
        card_.reset();
    }
}

std::string EbookCard::text() const {
    if (!card_) {
        return written_.text;
    }
    const std::string text = taken(e_vcard_to_string(card(), EVC_FORMAT_VCARD_30));
    if (e_vcard_get_attribute(card(), EVC_FN) && e_vcard_get_attribute(card(), EVC_N)) {
        return text + "\r\n";
    }
    const std::unique_ptr<EVCard, Releaser> whole(e_vcard_new_from_string(text.c_str()));
    if (e_vcard_get_attribute(whole.get(), EVC_FN) == nullptr) {
        append(whole.get(), EVC_FN, shownName(whole.get(), name()));
    }
    if (e_vcard_get_attribute(whole.get(), EVC_N) == nullptr) {
        EVCardAttribute* empty = e_vcard_attribute_new(nullptr, EVC_N);
        e_vcard_attribute_add_values(empty, "", "", "", "", "", nullptr);
        e_vcard_append_attribute(whole.get(), empty);
    }
    return taken(e_vcard_to_string(whole.get(), EVC_FORMAT_VCARD_30)) + "\r\n";
}

std::string EbookCard::uniqueId() const {
    return card_ ? firstValue(card(), EVC_UID) : written_.uniqueId;
}

bool EbookCard::isGroup() const {
    if (!card_) {
        return written_.isGroup;
    }
    return isSameWord(firstValue(card(), "KIND").c_str(), "group") ||
           isSameWord(firstValue(card(), "X-ADDRESSBOOKSERVER-KIND").c_str(), "group") || isContactList();
}

bool EbookCard::isCompany() const {
    return isSameWord(firstValue(card(), "X-ABShowAs").c_str(), "COMPANY") ||
           isSameWord(firstValue(card(), "KIND").c_str(), "org");
}

std::optional<std::string> EbookCard::textOf(const char* attribute) const {
    std::string text = firstValue(card(), attribute);
    return text.empty() ? std::nullopt : std::optional(std::move(text));
}

std::optional<std::string> EbookCard::namePart(NamePart part) const {
    const Name parts = name();
    if (part == NamePart::Given && std::all_of(parts.begin(), parts.end(), std::mem_fn(&std::string::empty))) {
        return textOf(EVC_FN);
    }
    const std::string& text = parts[std::size_t(part)];
    return text.empty() ? std::nullopt : std::optional(text);
}

std::vector<LabelledText> EbookCard::labelledTexts(const char* attribute) const {
    std::vector<LabelledText> texts;
    forEach(card(), attribute, [&](EVCardAttribute* found) {
        if (std::string text = withoutScheme(wholeValue(found)); !text.empty()) {
            texts.push_back({labelOf(card(), found, attribute), std::move(text)});
        }
    });
    return texts;
}

std::vector<std::string> EbookCard::members() const {
    std::vector<std::string> ids;
    const auto add = [&ids](const std::string& id) { ids.emplace_back(bareId(id)); };
    for (const char* attribute : {"MEMBER", "X-ADDRESSBOOKSERVER-MEMBER"}) {
        forEach(card(), attribute, [&](EVCardAttribute* found) { add(wholeValue(found)); });
    }
    if (isContactList()) {
        forEach(card(), EVC_EMAIL, [&](EVCardAttribute* found) {
            if (GList* id = e_vcard_attribute_get_param(found, kListMember)) {
                add(static_cast<const char*>(id->data));
            }
        });
    }
    return ids;
}

void EbookCard::setUniqueId(const std::string& uniqueId) {
    setText(EVC_UID, uniqueId);
}

void EbookCard::makeGroup() {
    setText("KIND", "group");
}

void EbookCard::setText(const char* attribute, const std::optional<std::string>& text) {
    e_vcard_remove_attributes(card(), nullptr, attribute);
    if (text) {
        append(card(), attribute, *text);
    }
}

void EbookCard::setNamePart(NamePart part, const std::optional<std::string>& name) {
    Name parts = this->name();
    parts[std::size_t(part)] = name.value_or("");
    setName(parts);
}

void EbookCard::setLabelledTexts(const char* attribute, const std::vector<LabelledText>& texts) {
    e_vcard_remove_attributes(card(), nullptr, attribute);
    for (const LabelledText& entry : texts) {
        const auto* row = std::find_if(std::begin(kLabelTypes), std::end(kLabelTypes), [&](const auto& candidate) {
            return attribute == candidate.attribute && entry.label == candidate.label;
        });
        append(card(), attribute, entry.text,
               row == std::end(kLabelTypes) ? std::initializer_list<const char*>{} : row->types);
    }
}

void EbookCard::addMember(const Card& person) {
    const std::string id = person.uniqueId();
    const std::vector<std::string> known = members();
    if (std::find(known.begin(), known.end(), bareId(id)) != known.end()) {
        return;
    }
    if (isContactList()) {
        addToContactList(person);
    } else {
        append(card(), "MEMBER", memberAddress(id));
    }
}

void EbookCard::makeContactList(const std::vector<CardOwner>& people) {
    std::vector<EVCardAttribute*> carried;
    forEach(card(), "MEMBER", [&](EVCardAttribute* member) {
        const std::string id = wholeValue(member);
        if (std::any_of(people.begin(), people.end(),
                        [&id](const CardOwner& person) { return bareId(person->uniqueId()) == bareId(id); })) {
            carried.push_back(member);
        }
    });
    setText("KIND", std::nullopt);
    setText(EVC_X_LIST, "TRUE");
    for (EVCardAttribute* member : carried) {
        const std::string id = wholeValue(member);
        e_vcard_remove_attribute(card(), member);
        addToContactList(**std::find_if(people.begin(), people.end(), [&id](const CardOwner& person) {
            return bareId(person->uniqueId()) == bareId(id);
        }));
    }
}

bool EbookCard::isContactList() const {
    return isSameWord(firstValue(card(), EVC_X_LIST).c_str(), "TRUE");
}

/// Also for a person without an address, for whom a fax number is enough.
void EbookCard::addToContactList(const Card& person) {
    const std::string shown = person.textOf(EVC_FN).value_or("");
    const std::string name = shown.empty() ? fullName(person) : shown;
    const std::optional<std::string> address = person.textOf(EVC_EMAIL);
    EDestination* entry = e_destination_new();
    e_destination_set_contact_uid(entry, person.uniqueId().c_str(), 0);
    e_destination_set_name(entry, name.c_str());
    if (address) {
        e_destination_set_email(entry, address->c_str());
    }
    EVCardAttribute* attribute = e_vcard_attribute_new(nullptr, EVC_EMAIL);
    e_destination_export_to_vcard_attribute(entry, attribute);
    e_vcard_append_attribute(card(), attribute);
    g_object_unref(entry);
}

void EbookCard::renameMembers(const std::unordered_map<std::string, std::string>& newIds) {
    const auto newIdOf = [&newIds](const std::string& id) {
        const auto found = newIds.find(std::string(bareId(id)));
        return found == newIds.end() ? std::nullopt : std::optional(found->second);
    };
    for (const char* attribute : {"MEMBER", "X-ADDRESSBOOKSERVER-MEMBER"}) {
        forEach(card(), attribute, [&](EVCardAttribute* found) {
            if (const auto id = newIdOf(wholeValue(found))) {
                e_vcard_attribute_remove_values(found);
                e_vcard_attribute_add_value(found, memberAddress(*id).c_str());
            }
        });
    }
    forEach(card(), EVC_EMAIL, [&](EVCardAttribute* found) {
        GList* old = e_vcard_attribute_get_param(found, kListMember);
        if (const auto id = old ? newIdOf(static_cast<const char*>(old->data)) : std::nullopt) {
            e_vcard_attribute_remove_param(found, kListMember);
            e_vcard_attribute_add_param_with_value(found, e_vcard_attribute_param_new(kListMember), id->c_str());
        }
    });
}

EbookCard::Name EbookCard::name() const {
    Name parts;
    EVCardAttribute* attribute = e_vcard_get_attribute(card(), EVC_N);
    GList* value = attribute ? e_vcard_attribute_get_values(attribute) : nullptr;
    for (std::string& part : parts) {
        if (value) {
            part = static_cast<const char*>(value->data);
            value = value->next;
        }
    }
    return parts;
}

void EbookCard::setName(const Name& parts) {
    e_vcard_remove_attributes(card(), nullptr, EVC_N);
    EVCardAttribute* attribute = e_vcard_attribute_new(nullptr, EVC_N);
    for (const std::string& part : parts) {
        e_vcard_attribute_add_value(attribute, part.c_str());
    }
    e_vcard_append_attribute(card(), attribute);
}
