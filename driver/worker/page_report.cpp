#include "driver/worker/page_report.h"

#include "platform/foundation/message.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <utility>

namespace {

constexpr std::size_t kLongestLine = 1000;
constexpr std::string_view kWhole = "whole";
constexpr std::string_view kRepaired = "repaired";
constexpr std::string_view kRefused = "refused ";

bool writeLine(std::FILE* output, std::string_view text) {
    return std::fwrite(text.data(), 1, text.size(), output) == text.size() && std::fputc('\n', output) != EOF;
}

/// Without the locale's decimal sign, and with as many digits as give the same number back.
bool writeRun(std::FILE* output, std::size_t count, const Size& size) {
    std::array<char, 100> line;
    char* const end = line.data() + line.size();
    char* at = std::to_chars(line.data(), end, count).ptr;
    for (const double side : {size.width, size.height}) {
        *at++ = ' ';
        at = std::to_chars(at, end, side).ptr;
    }
    return writeLine(output, {line.data(), static_cast<std::size_t>(at - line.data())});
}

template <typename Number>
bool readNumber(std::string_view* text, Number* number) {
    const auto [end, error] = std::from_chars(text->data(), text->data() + text->size(), *number);
    text->remove_prefix(static_cast<std::size_t>(end - text->data()));
    return error == std::errc();
}

bool skipBlank(std::string_view* text) {
    const bool isThere = text->starts_with(' ');
    text->remove_prefix(isThere ? 1 : 0);
    return isThere;
}

/// Not a number is neither.
bool isSide(double length) {
    return length > 0 && length <= kLongestSide;
}

}  // namespace

bool writePageReport(const std::optional<DocumentPages>& pages, std::string_view reason, std::FILE* output) {
    if (!pages) {
        std::string line(kRefused);
        line += reason.substr(0, kLongestLine - kRefused.size());
        std::ranges::replace(line, '\n', ' ');
        return writeLine(output, line) && std::fflush(output) == 0;
    }
    const std::vector<Size>& sizes = pages->sizes;
    for (auto run = sizes.begin(); run != sizes.end();) {
        const auto end = std::find_if(run, sizes.end(), [run](const Size& size) { return size != *run; });
        if (!writeRun(output, static_cast<std::size_t>(end - run), *run)) {
            return false;
        }
        run = end;
    }
    return writeLine(output, pages->isRepaired ? kRepaired : kWhole) && std::fflush(output) == 0;
}

bool PageReportReader::add(std::string_view bytes) {
    while (!bytes.empty() && state_ == State::pages) {
        const std::size_t end = std::min(bytes.find('\n'), bytes.size());
        line_ += bytes.substr(0, std::min(end, kLongestLine + 1));
        if (line_.size() > kLongestLine || (end < bytes.size() && !endLine())) {
            state_ = State::failed;
        }
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
    }
    if (!bytes.empty()) {
        state_ = State::failed;  // something follows the end
    }
    return state_ != State::failed;
}

bool PageReportReader::endLine() {
    if (line_ == kWhole || line_ == kRepaired) {
        pages_.isRepaired = line_ == kRepaired;
        state_ = State::ended;
        return !pages_.sizes.empty();
    }
    if (line_.starts_with(kRefused)) {
        refusal_ = line_.substr(kRefused.size());
        state_ = State::ended;
        return pages_.sizes.empty() && !refusal_.empty();
    }
    const bool isTaken = addPages();
    line_.clear();
    return isTaken;
}

bool PageReportReader::addPages() {
    std::string_view rest = line_;
    std::uint64_t count = 0;
    Size size;
    const std::uint64_t room = static_cast<std::uint64_t>(kMostPlannedPages) - pages_.sizes.size();
    if (!readNumber(&rest, &count) || !skipBlank(&rest) || !readNumber(&rest, &size.width) || !skipBlank(&rest) ||
        !readNumber(&rest, &size.height) || !rest.empty() || count < 1 || count > room || !isSide(size.width) ||
        !isSide(size.height)) {
        return false;
    }
    pages_.sizes.insert(pages_.sizes.end(), count, size);
    return true;
}

std::optional<DocumentPages> PageReportReader::take(std::string* reason) {
    if (!refusal_.empty()) {
        *reason = unpackMessages(refusal_);
        return std::nullopt;
    }
    return std::move(pages_);
}
