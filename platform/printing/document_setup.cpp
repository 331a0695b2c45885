#include "platform/printing/document_setup.h"

#include "platform/foundation/CFCollections.h"
#include "platform/printing/last_error.h"

#include <cerrno>
#include <fstream>
#include <string_view>
#include <vector>

#include <unistd.h>

namespace {

bool writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(file, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR) {
            return false;
        }
        bytes.remove_prefix(count < 0 ? 0 : static_cast<std::size_t>(count));
    }
    return true;
}

bool endsSetup(std::string_view line) {
    return line.starts_with("%%EndSetup") || line.starts_with("%%Page:");
}

}  // namespace

bool copyWithSetup(const std::string& document, CFDataRef setup, int output, std::string* reason) {
    constexpr std::size_t kBlock = std::size_t{1} << 16;
    std::ifstream input(document, std::ios::binary);
    std::string head;
    std::string line;
    while (std::getline(input, line) && !endsSetup(line)) {
        head.append(line).append("\n");
    }
    if (!input) {
        *reason = "the filters wrote no setup for pages";
        return false;
    }
    head.append(reinterpret_cast<const char*>(CFDataGetBytePtr(setup)),
                static_cast<std::size_t>(CFDataGetLength(setup)));
    bool written = writeAll(output, head.append(line).append("\n"));
    std::vector<char> block(kBlock);
    while (written && input) {
        input.read(block.data(), static_cast<std::streamsize>(block.size()));
        written = writeAll(output, {block.data(), static_cast<std::size_t>(input.gcount())});
    }
    if (!written || input.bad()) {
        *reason = systemReason(errno);
        return false;
    }
    return true;
}
