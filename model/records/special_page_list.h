// Lists of special pages, in the order of the document's pages.
//
// A list owns its pages; a page keeps its address as long as it is in the list, so rows of a view may point at it. The
// pages that are handed to a list stay the caller's: clones enter. Start and end pages of pages in a list are changed
// through update, which keeps the order, and not on the page.
#pragma once

#include "model/records/special_page.h"

#include <cstdint>
#include <span>
#include <vector>

using SpecialPages = std::vector<std::unique_ptr<SpecialPage>>;

class SpecialPageList {
public:
    SpecialPageList() = default;
    virtual ~SpecialPageList() = default;
    SpecialPageList(const SpecialPageList&) = delete;
    SpecialPageList& operator=(const SpecialPageList&) = delete;

    /// Lent; null outside of the list.
    virtual SpecialPage* pageAtIndex(CFIndex index) const;
    /// Puts clones of the pages in, one after the other. 0, or the reason why none came in.
    virtual OSStatus add(const SpecialPages& pages) = 0;

    CFIndex count() const { return static_cast<CFIndex>(pages_.size()); }
    /// Puts clones of the replacements in the place of a page of the list, which is deleted. When add fails the page
    /// stays where it was. Returns add's result; 0, with nothing done, for a page that is not in the list.
    OSStatus update(const SpecialPage* page, const SpecialPages& replacements);
    /// Deletes a page of the list; nothing happens for another one.
    void remove(const SpecialPage* page);
    /// Deletes those of the pages that are in the list, each found in log n steps.
    void remove(std::span<const SpecialPage* const> pages);
    void clear() {
        pages_.clear();
        ++revision_;
    }

    /// Another number after each of these changes. Pages of the list that are changed themselves do not count.
    std::uint64_t revision() const { return revision_; }

    /// A new array of the pages' dictionaries; nothing for an empty list, whose item then leaves the ticket.
    [[nodiscard]] CFRef<CFMutableArrayRef> asTicket() const;

protected:
    SpecialPages pages_;
    std::uint64_t revision_ = 0;

private:
    SpecialPages::iterator find(const SpecialPage* page);
};

/// Inserts by the page that they follow; those of one page in the order in which they came.
class InsertList final : public SpecialPageList {
public:
    /// Null for a page that is no insert, too.
    Insert* pageAtIndex(CFIndex index) const override;
    /// Always 0. For n pages into m it takes n log n + m steps.
    OSStatus add(const SpecialPages& pages) override;

    /// Makes the list that of a ticket's array, which may be null; elements that are no dictionaries are left out.
    void setFromTicket(CFArrayRef ticket);
};

/// Exceptions, none of which overlaps another: a new one takes its pages away from those that had them, which are
/// shortened, split or deleted and keep all other settings. A page that is split keeps its first part.
class ExceptionPageList final : public SpecialPageList {
public:
    ExceptionPage* pageAtIndex(CFIndex index) const override;
    /// Always 0. Ranges that end before they start, and pages that are no exceptions, are left out. For n pages into m
    /// it takes (n + m) log (n + m) steps.
    OSStatus add(const SpecialPages& pages) override;

    /// Makes the list that of a ticket's array, as if each of its dictionaries were added.
    void setFromTicket(CFArrayRef ticket);
};
