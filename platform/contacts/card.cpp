#include "platform/contacts/card.h"

#include "platform/contacts/vcard_split.h"

#include <algorithm>
#include <iterator>

#include <libebook-contacts/libebook-contacts.h>

namespace {

struct LabelTypes {
    const char* attribute;
    const char* label;
    std::initializer_list<const char*> types;
};

// How labels are written: attribute, label, values of TYPE.
constexpr LabelTypes kLabelTypes[] = {
    {"TEL", "Work", {"WORK", "VOICE"}},
    {"TEL", "WorkFAX", {"WORK", "FAX"}},
    {"EMAIL", "Work", {"WORK"}},
};
static_assert(std::size(kLabelTypes) == 3);

std::string taken(char* text) {
    std::string result = text ? text : "";
    g_free(text);
    return result;
}

std::string firstValue(EVCard* card, const char* attribute) {
    EVCardAttribute* found = e_vcard_get_attribute(card, attribute);
    GList* values = found ? e_vcard_attribute_get_values(found) : nullptr;
    return values ? static_cast<const char*>(values->data) : "";
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

/// RFC 6350 names members by URI.
std::string memberAddress(const std::string& uniqueId) {
    return g_uuid_string_is_valid(uniqueId.c_str()) ? "urn:uuid:" + uniqueId : uniqueId;
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

void Card::Releaser::operator()(EVCard* card) const {
    g_object_unref(card);
}

Card::Card() : card_(e_vcard_new()) {
    append(card_.get(), EVC_UID, taken(g_uuid_string_random()));
}

// The library knows no quoted-printable values of more than one line.
Card::Card(const std::string& text) : card_(e_vcard_new_from_string(joinSoftBreaks(text).c_str())) {}

std::string Card::text() const {
    const std::unique_ptr<EVCard, Releaser> whole(
        e_vcard_new_from_string(taken(e_vcard_to_string(card_.get(), EVC_FORMAT_VCARD_30)).c_str()));
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

std::string Card::uniqueId() const {
    return firstValue(card_.get(), EVC_UID);
}

bool Card::isGroup() const {
    return g_ascii_strcasecmp(firstValue(card_.get(), "KIND").c_str(), "group") == 0;
}

void Card::makeGroup() {
    setText("KIND", "group");
}

void Card::setText(const char* attribute, const std::optional<std::string>& text) {
    e_vcard_remove_attributes(card_.get(), nullptr, attribute);
    if (text) {
        append(card_.get(), attribute, *text);
    }
}

void Card::setGivenName(const std::optional<std::string>& name) {
    Name parts = this->name();
    parts[1] = name.value_or("");
    setName(parts);
}

void Card::setLabelledTexts(const char* attribute, const std::vector<LabelledText>& texts) {
    e_vcard_remove_attributes(card_.get(), nullptr, attribute);
    for (const LabelledText& entry : texts) {
        const LabelTypes* row =
            std::find_if(std::begin(kLabelTypes), std::end(kLabelTypes), [&](const auto& candidate) {
                return std::string_view(attribute) == candidate.attribute && entry.label == candidate.label;
            });
        append(card_.get(), attribute, entry.text,
               row == std::end(kLabelTypes) ? std::initializer_list<const char*>{} : row->types);
    }
}

void Card::addMember(const Card& person) {
    const std::string address = memberAddress(person.uniqueId());
    for (GList* each = e_vcard_get_attributes(card_.get()); each; each = each->next) {
        auto* attribute = static_cast<EVCardAttribute*>(each->data);
        if (g_ascii_strcasecmp(e_vcard_attribute_get_name(attribute), "MEMBER") == 0 &&
            taken(e_vcard_attribute_get_value(attribute)) == address) {
            return;
        }
    }
    append(card_.get(), "MEMBER", address);
}

Card::Name Card::name() const {
    Name parts;
    EVCardAttribute* attribute = e_vcard_get_attribute(card_.get(), EVC_N);
    GList* value = attribute ? e_vcard_attribute_get_values(attribute) : nullptr;
    for (std::string& part : parts) {
        if (value) {
            part = static_cast<const char*>(value->data);
            value = value->next;
        }
    }
    return parts;
}

void Card::setName(const Name& parts) {
    e_vcard_remove_attributes(card_.get(), nullptr, EVC_N);
    EVCardAttribute* attribute = e_vcard_attribute_new(nullptr, EVC_N);
    for (const std::string& part : parts) {
        e_vcard_attribute_add_value(attribute, part.c_str());
    }
    e_vcard_append_attribute(card_.get(), attribute);
}
