#include "platform/printing/job_stream.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::string_view kPage = "%%Page: ";

}  // namespace

bool JobCounter::write(std::string_view bytes) {
    bytes_ += bytes.size();
    for (std::string_view rest = bytes; !rest.empty();) {
        const std::size_t end = rest.find('\n');
        const std::string_view line = rest.substr(0, end);
        lineStart_.append(line.substr(0, kPage.size() - std::min(kPage.size(), lineStart_.size())));
        if (end == std::string_view::npos) {
            break;
        }
        pages_ += lineStart_ == kPage ? 1 : 0;
        lineStart_.clear();
        rest.remove_prefix(end + 1);
    }
    return next_.write(bytes);
}

Packer::Packer(ByteSink& next) : next_(next) {
    constexpr int kGzipHeader = 16;
    constexpr int kUsualMemory = 8;
    isReady_ = deflateInit2(&stream_, Z_BEST_SPEED, Z_DEFLATED, MAX_WBITS + kGzipHeader, kUsualMemory,
                            Z_DEFAULT_STRATEGY) == Z_OK;
}

Packer::~Packer() {
    deflateEnd(&stream_);
}

bool Packer::pack(std::string_view bytes, int flush) {
    std::array<char, 65536> packed;
    stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    stream_.avail_in = static_cast<uInt>(bytes.size());
    do {
        stream_.next_out = reinterpret_cast<Bytef*>(packed.data());
        stream_.avail_out = static_cast<uInt>(packed.size());
        if (!isReady_ || deflate(&stream_, flush) == Z_STREAM_ERROR ||
            !next_.write({packed.data(), packed.size() - stream_.avail_out})) {
            return false;
        }
    } while (stream_.avail_out == 0);
    return true;
}
