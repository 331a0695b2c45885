// What happens to a job's PostScript on its way from the filters.
#pragma once

#include "platform/files/byte_sink.h"

#include <cstdint>
#include <string>
#include <vector>

#include <zlib.h>

/// Counts what passes: bytes, and pages by their comments ("%%Page: 1 1").
class JobCounter : public ByteSink {
public:
    explicit JobCounter(ByteSink& next) : next_(next) {}

    bool write(std::string_view bytes) override;

    [[nodiscard]] std::uintmax_t bytes() const { return bytes_; }
    [[nodiscard]] std::size_t pages() const { return pages_; }

private:
    ByteSink& next_;
    std::uintmax_t bytes_ = 0;
    std::size_t pages_ = 0;
    std::string lineStart_;  // as far as it can be a page's
};

/// Packs what passes (gzip), at the level that costs least.
class Packer : public ByteSink {
public:
    explicit Packer(ByteSink& next);
    ~Packer() override;

    bool write(std::string_view bytes) override { return pack(bytes, Z_NO_FLUSH); }
    /// Writes the end. False like write().
    bool finish() { return pack({}, Z_FINISH); }

private:
    bool pack(std::string_view bytes, int flush);

    ByteSink& next_;
    z_stream stream_{};
    bool isReady_ = false;
};
