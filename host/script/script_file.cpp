#include "host/script/script_file.h"

#include "platform/files/plain_file.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/message.h"
#include "platform/foundation/terminal_text.h"
#include "platform/foundation/text.h"

#include <cerrno>
#include <cstdio>

namespace script {

std::optional<Script> readScriptFile(const std::string& path, std::string* reason,
                                     std::span<const std::string_view> ownActions) {
    const auto data = readPlainFile(path, kKeptFileMaximumBytes);
    if (!data) {
        *reason = readFault(errno, kKeptFileMaximumBytes);
        return std::nullopt;
    }
    Script parsed = parse({reinterpret_cast<const char*>(CFDataGetBytePtr(data.get())),
                           static_cast<std::size_t>(CFDataGetLength(data.get()))},
                          ownActions);
    for (const Error& fault : parsed.errors) {
        printLine(stderr, readable(path) + ":" + std::to_string(fault.line) + ": " +
                              messageText("column %1: %2", {fault.column, fault.reason}));
    }
    return parsed;
}

}  // namespace script
