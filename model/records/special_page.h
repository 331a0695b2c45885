// Special pages of a job: covers, inserts and exceptions, each on paper of its own.
//
// Every kind becomes a dictionary of a ticket and is made from one. What a dictionary lacks, and numbers that are no
// 32-bit integers, leave the default. A null dictionary is an empty one.
#pragma once

#include "model/records/image_shift.h"
#include "model/stock/stock.h"

#include <memory>

class SpecialPage {
public:
    SpecialPage() = default;
    /// Without a "Stock" the paper is not set in any respect.
    explicit SpecialPage(CFDictionaryRef ticket);
    SpecialPage(const SpecialPage&) = default;
    virtual ~SpecialPage() = default;

    [[nodiscard]] virtual CFRef<CFMutableDictionaryRef> asTicket() const;
    [[nodiscard]] virtual std::unique_ptr<SpecialPage> clone() const = 0;

    /// Inserts: the page of the document after which they go, 0 before the first. Exceptions: their first page.
    SInt32 startPage() const { return startPage_; }
    void setStartPage(SInt32 page) { startPage_ = page; }
    Stock& stock() { return stock_; }
    const Stock& stock() const { return stock_; }

protected:
    SpecialPage& operator=(const SpecialPage&) = default;

private:
    SInt32 startPage_ = 0;
    Stock stock_;
};

/// What is printed on a cover. The dialog offers blank and both sides (CoverSidesImagedMap).
enum CoverSides : SInt32 { kCoverBlank = 1, kCoverSide1 = 2, kCoverSide2 = 3, kCoverBothSides = 4 };

class Cover final : public SpecialPage {
public:
    Cover() = default;
    explicit Cover(CFDictionaryRef ticket);

    [[nodiscard]] CFRef<CFMutableDictionaryRef> asTicket() const override;
    [[nodiscard]] std::unique_ptr<SpecialPage> clone() const override;

    /// One of CoverSides.
    SInt32 sidesImaged() const { return sidesImaged_; }
    void setSidesImaged(SInt32 sides) { sidesImaged_ = sides; }

    /// Same sides and equal paper; a cover's start page means nothing.
    bool operator==(const Cover& other) const;

private:
    SInt32 sidesImaged_ = kCoverBlank;
};

/// Blank sheets after a page of the document.
class Insert final : public SpecialPage {
public:
    Insert() = default;
    explicit Insert(CFDictionaryRef ticket);

    [[nodiscard]] CFRef<CFMutableDictionaryRef> asTicket() const override;
    [[nodiscard]] std::unique_ptr<SpecialPage> clone() const override;

    /// Number of sheets.
    SInt32 quantity() const { return quantity_; }
    void setQuantity(SInt32 quantity) { quantity_ = quantity; }

private:
    SInt32 quantity_ = 1;
};

/// A range of the document's pages that is printed in another way.
class ExceptionPage final : public SpecialPage {
public:
    ExceptionPage();
    explicit ExceptionPage(CFDictionaryRef ticket);

    [[nodiscard]] CFRef<CFMutableDictionaryRef> asTicket() const override;
    [[nodiscard]] std::unique_ptr<SpecialPage> clone() const override;

    /// The last page of the range.
    SInt32 endPage() const { return endPage_; }
    void setEndPage(SInt32 page) { endPage_ = page; }
    /// A value of PlexMap, or unset: as the job.
    SInt32 plex() const { return plex_; }
    void setPlex(SInt32 plex) { plex_ = plex; }
    _IS_Options& imageShift() { return imageShift_; }
    const _IS_Options& imageShift() const { return imageShift_; }
    /// How much lighter or darker; unset: as the job.
    SInt32 lightenDarken() const { return lightenDarken_; }
    void setLightenDarken(SInt32 level) { lightenDarken_ = level; }

private:
    SInt32 endPage_ = 0;
    SInt32 plex_ = kTicketValueUnset;
    _IS_Options imageShift_{};
    SInt32 lightenDarken_ = kTicketValueUnset;
};
