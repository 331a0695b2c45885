#include "model/records/page_range.h"

#include "platform/foundation/CFCharacterSet.h"
#include "platform/foundation/CFString.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>
#include <string_view>

namespace {

bool IsASCIIDigit(UniChar unit) {
    return unit >= u'0' && unit <= u'9';
}

/// A decimal digit of any script.
bool IsDigit(UniChar unit) {
    return IsASCIIDigit(unit) || (unit > 0x7F && CFCharacterSetIsLongCharacterMember(
                                                     CFCharacterSetGetPredefined(kCFCharacterSetDecimalDigit), unit));
}

/// The text's code units and a comma behind the last, which ends the last item: on the stack at ordinary lengths, else
/// in one piece of the heap.
class CodeUnits {
public:
    explicit CodeUnits(CFStringRef text) : length_(static_cast<std::size_t>(CFStringGetLength(text)) + 1) {
        if (length_ > short_.size()) {
            long_ = std::make_unique_for_overwrite<UniChar[]>(length_);
        }
        CFStringGetCharacters(text, {0, static_cast<CFIndex>(length_ - 1)}, data());
        data()[length_ - 1] = u',';
    }
    [[nodiscard]] std::u16string_view get() { return {data(), length_}; }

private:
    UniChar* data() { return long_ ? long_.get() : short_.data(); }

    std::size_t length_;
    std::array<UniChar, 1024> short_;
    std::unique_ptr<UniChar[]> long_;
};

class Parser {
public:
    Parser(bool asRanges, bool tells) : asRanges_(asRanges), tells_(tells) {}

    /// The text ends with a comma.
    OSStatus parse(std::u16string_view text) {
        ranges_.reserve(text.size() / 4);  // about what a long list has
        OSStatus status = noErr;
        const UniChar* unit = text.data();
        const UniChar* const end = unit + text.size();
        while (unit != end && status == noErr) {
            if (IsASCIIDigit(*unit)) {
                SInt32 number = 0;
                unit = readNumber(unit, &number);
                status = number > kPageNumberLimit ? OSStatus{kPageRangeErrTooLarge} : onNumber(number);
                continue;
            }
            if (*unit == u',') {
                status = onComma();
            } else if (*unit == u'-') {
                status = onDash();
            }
            ++unit;
        }
        return status == noErr && ranges_.empty() ? OSStatus{kPageRangeErrSyntax} : status;
    }

    std::vector<PageRange>& ranges() { return ranges_; }

private:
    enum class State { start, leadingDash, number, openEnd };

    /// Reads the number that begins at the unit and returns its end, which the last comma makes sure of. A number above
    /// the limit stays above it, however long it is.
    static const UniChar* readNumber(const UniChar* unit, SInt32* number) {
        SInt32 value = 0;
        for (; IsASCIIDigit(*unit) && value <= kPageNumberLimit; ++unit) {
            value = value * 10 + (*unit - u'0');
        }
        *number = value;
        while (IsDigit(*unit)) {
            ++unit;
        }
        return unit;
    }

    OSStatus onComma() {
        switch (state_) {
            case State::start:
                return noErr;
            case State::leadingDash:
                return kPageRangeErrSyntax;
            case State::number:
                return complete(first_, first_);
            case State::openEnd:
                return complete(first_, kPageNumberLimit);
        }
        return kPageRangeErrSyntax;
    }

    OSStatus onDash() {
        switch (state_) {
            case State::start:
                state_ = State::leadingDash;
                return noErr;
            case State::number:
                state_ = State::openEnd;
                return noErr;
            case State::leadingDash:
            case State::openEnd:
                break;
        }
        return kPageRangeErrSyntax;
    }

    OSStatus onNumber(SInt32 number) {
        switch (state_) {
            case State::leadingDash:
                return complete(1, number);
            case State::openEnd:
                return complete(first_, number);
            case State::number:
                append(first_, first_);
                break;
            case State::start:
                break;
        }
        first_ = number;
        state_ = State::number;
        return noErr;
    }

    OSStatus complete(SInt32 first, SInt32 last) {
        state_ = State::start;
        if (last < first) {
            if (tells_) {
                std::fprintf(stderr, "%d-%d\n", first, last);
            }
            return kPageRangeErrOrder;
        }
        append(first, last);
        return noErr;
    }

    void append(SInt32 first, SInt32 last) {
        if (asRanges_ || first == last) {
            ranges_.push_back({first, last - first + 1});
            return;
        }
        // An open range has millions of pages: room for exactly them, unless there was much already.
        const auto needed = ranges_.size() + static_cast<std::size_t>(last - first) + 1;
        if (needed > ranges_.capacity()) {
            ranges_.reserve(std::max(needed, 2 * ranges_.capacity()));
        }
        for (SInt32 page = first; page <= last; ++page) {
            ranges_.push_back({page, 1});
        }
    }

    const bool asRanges_;
    const bool tells_;
    State state_ = State::start;
    SInt32 first_ = 0;  // in the states number and openEnd
    std::vector<PageRange> ranges_;
};

}  // namespace

OSStatus CreatePageRangesBySeparatingString(CFStringRef text, Boolean asRanges, std::vector<PageRange>* ranges) {
    if (text == nullptr || ranges == nullptr) {
        return paramErr;
    }
    CodeUnits units(text);
    Parser parser(asRanges, true);
    const OSStatus status = parser.parse(units.get());
    if (status == noErr) {
        *ranges = std::move(parser.ranges());
    }
    return status;
}

OSStatus CheckPageRanges(CFStringRef text) {
    if (text == nullptr) {
        return paramErr;
    }
    CodeUnits units(text);
    Parser parser(true, false);
    const OSStatus status = parser.parse(units.get());
    const bool hasPageZero = std::ranges::find(parser.ranges(), 0, &PageRange::first) != parser.ranges().end();
    return status == noErr && hasPageZero ? OSStatus{kPageRangeErrPageNumber} : status;
}
