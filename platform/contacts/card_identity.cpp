#include "platform/contacts/card_identity.h"

#include "platform/contacts/card_library.h"

#include <QCryptographicHash>

#include <algorithm>

#include <strings.h>

namespace {

/// What stands in a line behind the attribute's name; `value` is empty when it takes a whole reader to tell.
struct UidLine {
    bool found = false;
    std::string_view value;
};

bool isPlain(char c) {
    return c > ' ' && c <= '~' && c != '\\' && c != ';' && c != ',';
}

/// `next` is what follows the line.
UidLine readLine(std::string_view line, std::string_view next) {
    std::string_view name = line.substr(0, std::min(line.find_first_of(":;"), line.size()));
    const char mark = name.size() < line.size() ? line[name.size()] : '\0';
    std::string_view value = line.substr(std::min(name.size() + 1, line.size()));
    if (const std::size_t group = name.rfind('.'); group != std::string_view::npos) {
        name.remove_prefix(group + 1);
    }
    if (name.size() != 3 || strncasecmp(name.data(), "UID", 3) != 0) {
        return {};
    }
    if (value.ends_with('\r')) {
        value.remove_suffix(1);
    }
    const bool isFolded = next.starts_with(' ') || next.starts_with('\t');
    const bool isWhole = mark == ':' && !isFolded && std::all_of(value.begin(), value.end(), isPlain);
    return {true, isWhole ? value : std::string_view()};
}

/// Nothing found in a card that has another card inside says nothing: the line could be the inner one's.
bool opensCard(std::string_view line) {
    return line.size() >= 11 && strncasecmp(line.data(), "BEGIN:VCARD", 11) == 0;
}

}  // namespace

std::string idFromBytes(const std::string& bytes) {
    const QByteArrayView view(bytes.data(), qsizetype(bytes.size()));
    std::string id = QCryptographicHash::hash(view, QCryptographicHash::Sha256).toHex().first(32).toStdString();
    id[12] = '8';  // the version whose content is its maker's own
    id[16] = 'a';
    for (const std::size_t dash : {8, 13, 18, 23}) {
        id.insert(dash, 1, '-');
    }
    return id;
}

std::string uniqueIdOf(const std::string& card) {
    int cards = 0;
    UidLine uid;
    for (std::string_view rest = card; !rest.empty() && !uid.found && cards < 2;) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(line.size() + 1, rest.size()));
        cards += opensCard(line);
        uid = readLine(line, rest);
    }
    if (uid.found && !uid.value.empty()) {
        return std::string(uid.value);
    }
    const std::string read = uid.found || cards > 1 ? cardLibrary()->read(card)->uniqueId() : std::string();
    return read.empty() ? idFromBytes(card) : read;
}

CardOwner readIdentifiedCard(const std::string& text) {
    CardOwner card = cardLibrary()->read(text);
    // Also where the library sees another id in a broken card: one card, one id.
    if (const std::string id = uniqueIdOf(text); card->uniqueId() != id) {
        card->setUniqueId(id);
    }
    return card;
}
