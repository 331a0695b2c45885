#include "host/script/script_file.h"

#include "host/script/text.h"
#include "platform/files/url_access.h"
#include "platform/foundation/CFCollections.h"

#include <cstdio>
#include <cstring>

namespace script {

std::optional<Script> readScriptFile(const std::string& path, std::string* reason,
                                     std::span<const std::string_view> ownActions) {
    CFDataRef bytes = nullptr;
    SInt32 error = 0;
    if (!CFURLCreateDataAndPropertiesFromResource(nullptr, fileURL(path).get(), &bytes, nullptr, nullptr, &error)) {
        *reason = std::strerror(error);
        return std::nullopt;
    }
    const auto data = CFRef<CFDataRef>::adopt(bytes);
    Script parsed = parse({reinterpret_cast<const char*>(CFDataGetBytePtr(data.get())),
                           static_cast<std::size_t>(CFDataGetLength(data.get()))},
                          ownActions);
    for (const Error& fault : parsed.errors) {
        std::fprintf(stderr, "%s:%d: column %d: %s\n", readable(path).c_str(), fault.line, fault.column, fault.reason.c_str());
    }
    return parsed;
}

}  // namespace script
