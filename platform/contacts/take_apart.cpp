#include "platform/contacts/take_apart.h"

#include "platform/contacts/readable_text.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include <libebook/libebook.h>

namespace {

bool isSameWord(const char* left, const char* right) {
    return g_ascii_strcasecmp(left, right) == 0;
}

std::vector<std::string> wordsOf(const std::string& list) {
    std::vector<std::string> words;
    for (std::size_t at = 0; at < list.size();) {
        const std::size_t end = std::min(list.find(',', at), list.size());
        words.push_back(list.substr(at, end - at));
        at = end + 1;
    }
    return words;
}

/// Decoding has brought up bytes of no named character set, and line breaks that would be written as other ones.
void repairValues(EVCardAttribute* attribute) {
    bool isBroken = false;
    for (GList* value = e_vcard_attribute_get_values(attribute); value; value = value->next) {
        isBroken |= !isReadableValue(static_cast<const char*>(value->data));
    }
    if (!isBroken) {
        return;
    }
    std::vector<std::string> values;
    for (GList* value = e_vcard_attribute_get_values(attribute); value; value = value->next) {
        values.push_back(readableValue(static_cast<const char*>(value->data)));
    }
    e_vcard_attribute_remove_values(attribute);
    for (const std::string& value : values) {
        e_vcard_attribute_add_value(attribute, value.c_str());
    }
}

/// Version 4.0 may write types as a list in one text, which programs that know version 3.0 take for one type.
EVCardAttributeParam* withTypesApart(EVCardAttributeParam* parameter) {
    const char* name = e_vcard_attribute_param_get_name(parameter);
    if (!isSameWord(name, EVC_TYPE)) {
        return e_vcard_attribute_param_copy(parameter);
    }
    EVCardAttributeParam* result = e_vcard_attribute_param_new(name);
    for (GList* value = e_vcard_attribute_param_get_values(parameter); value; value = value->next) {
        for (const std::string& type : wordsOf(static_cast<const char*>(value->data))) {
            e_vcard_attribute_param_add_value(result, type.c_str());
        }
    }
    return result;
}

bool isName(std::string_view text) {
    return !text.empty() &&
           std::all_of(text.begin(), text.end(), [](char c) { return g_ascii_isalnum(c) || c == '-' || c == '_'; });
}

/// What the value was written in. It has been decoded, and would be decoded again when the card is written.
bool isQuotedPrintable(EVCardAttributeParam* parameter) {
    GList* const values = e_vcard_attribute_param_get_values(parameter);
    return isSameWord(e_vcard_attribute_param_get_name(parameter), EVC_ENCODING) && values != nullptr &&
           isSameWord(static_cast<const char*>(values->data), "QUOTED-PRINTABLE");
}

/// The library reads parameters from the last one to the first.
void restoreParameters(EVCardAttribute* attribute) {
    if (!e_vcard_attribute_get_params(attribute)) {
        return;
    }
    std::vector<EVCardAttributeParam*> parameters;
    for (GList* each = e_vcard_attribute_get_params(attribute); each; each = each->next) {
        auto* parameter = static_cast<EVCardAttributeParam*>(each->data);
        const char* name = e_vcard_attribute_param_get_name(parameter);
        // All text is UTF-8 by now, and a parameter that has no real name would not be read again.
        if (isName(name) && !isSameWord(name, "CHARSET") && !isQuotedPrintable(parameter)) {
            parameters.push_back(withTypesApart(parameter));
        }
    }
    e_vcard_attribute_remove_params(attribute);
    for (EVCardAttributeParam* parameter : parameters) {
        e_vcard_attribute_add_param(attribute, parameter);  // in front of the others
    }
}

}  // namespace

EVCard* takeApart(const std::string& text) {
    EVCard* card = e_vcard_new_from_string(readableText(text).c_str());
    // Until somebody asks, the card is not read, and would be written as it came.
    e_vcard_get_attributes(card);
    // Inside of a card, these would begin or end another one.
    e_vcard_remove_attributes(card, nullptr, "BEGIN");
    e_vcard_remove_attributes(card, nullptr, "END");
    for (GList* each = e_vcard_get_attributes(card); each; each = each->next) {
        repairValues(static_cast<EVCardAttribute*>(each->data));
        restoreParameters(static_cast<EVCardAttribute*>(each->data));
    }
    return card;
}
