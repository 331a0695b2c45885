#include "driver/job/postscript_editor.h"

#include <cstring>
#include <utility>

namespace {

/// A line without its end.
std::string_view bare(std::string_view line) {
    while (line.ends_with('\n') || line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    return line;
}

/// A filter without a PPD asks for one side and its own resolution.
bool asksForDevice(std::string_view line) {
    return line.starts_with("<<") && bare(line).ends_with(">> setpagedevice");
}

}  // namespace

void PageCodes::add(const std::string& code) {
    if (code.empty()) {
        numbers_.push_back(0);
        return;
    }
    // A job goes back and forth between few kinds of paper.
    std::size_t known = codes_.size();
    while (known-- > 1 && codes_[known] != code) {
    }
    if (known == 0) {
        known = codes_.size();
        codes_.push_back(code);
    }
    numbers_.push_back(static_cast<std::uint32_t>(known));
}

const std::string& PageCodes::operator[](std::size_t page) const {
    return codes_[page < numbers_.size() ? numbers_[page] : 0];
}

PostScriptEditor::PostScriptEditor(std::string header, const PageCodes& codes, Progress progress, ByteSink& next)
    : header_(std::move(header)), codes_(codes), progress_(std::move(progress)), next_(next) {}

bool PostScriptEditor::write(std::string_view bytes) {
    while (!bytes.empty() && isTaken_) {
        const void* const found = std::memchr(bytes.data(), '\n', bytes.size());
        if (found == nullptr) {
            part_ += bytes;
            break;
        }
        const auto length = static_cast<std::size_t>(static_cast<const char*>(found) - bytes.data()) + 1;
        if (part_.empty()) {
            line(bytes.substr(0, length));
        } else {
            part_ += bytes.substr(0, length);
            line(std::exchange(part_, {}));
        }
        bytes.remove_prefix(length);
    }
    return isTaken_;
}

bool PostScriptEditor::finish() {
    if (!part_.empty()) {
        line(std::exchange(part_, {}));
    }
    return isTaken_ && page_ == codes_.count() && header_.empty();
}

bool PostScriptEditor::put(std::string_view text) {
    isTaken_ = isTaken_ && (text.empty() || next_.write(text));
    return isTaken_;
}

bool PostScriptEditor::line(std::string_view line) {
    if (!line.starts_with("%%")) {
        return place_ == Place::setup && asksForDevice(line) ? isTaken_ : put(line);
    }
    // Data of a page may look like a comment: only the next page's number begins the next page.
    if (line.starts_with("%%Page: ") && bare(line).ends_with(" " + std::to_string(page_ + 1))) {
        ++page_;
        place_ = Place::pageSetup;
        isTaken_ = isTaken_ && (!progress_ || progress_(page_));
    } else if (place_ == Place::comments && bare(line) == "%%EndComments") {
        place_ = Place::prolog;
        return put(line) && put(std::exchange(header_, {}));
    } else if (place_ == Place::prolog && line.starts_with("%%BeginSetup")) {
        place_ = Place::setup;
    } else if (place_ == Place::setup && line.starts_with("%%EndSetup")) {
        place_ = Place::pages;
    } else if (place_ == Place::pageSetup && line.starts_with("%%EndPageSetup")) {
        place_ = Place::pages;
        return put(codes_[page_ - 1]) && put(line);
    }
    return put(line);
}
