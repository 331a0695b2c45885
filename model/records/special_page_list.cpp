#include "model/records/special_page_list.h"

#include "model/records/page_layers.h"

#include <algorithm>

namespace {

template <typename Page>
SpecialPages PagesOfTicket(CFArrayRef ticket) {
    SpecialPages pages;
    const CFIndex count = CFArrayGetCount(ticket);
    for (CFIndex i = 0; i < count; ++i) {
        const void* element = CFArrayGetValueAtIndex(ticket, i);
        if (CFGetTypeID(element) == CFDictionaryGetTypeID()) {
            pages.push_back(std::make_unique<Page>(static_cast<CFDictionaryRef>(element)));
        }
    }
    return pages;
}

}  // namespace

SpecialPage* SpecialPageList::pageAtIndex(CFIndex index) const {
    return index >= 0 && index < count() ? pages_[static_cast<std::size_t>(index)].get() : nullptr;
}

OSStatus SpecialPageList::update(const SpecialPage* page, const SpecialPages& replacements) {
    const auto found = find(page);
    if (found == pages_.end()) {
        return noErr;
    }
    const auto index = found - pages_.begin();
    std::unique_ptr<SpecialPage> old = std::move(*found);
    pages_.erase(found);
    ++revision_;
    const OSStatus status = add(replacements);
    if (status != noErr) {
        pages_.insert(pages_.begin() + index, std::move(old));
    }
    return status;
}

void SpecialPageList::remove(const SpecialPage* page) {
    const auto found = find(page);
    if (found != pages_.end()) {
        pages_.erase(found);
        ++revision_;
    }
}

void SpecialPageList::remove(std::span<const SpecialPage* const> pages) {
    std::vector<const SpecialPage*> removed(pages.begin(), pages.end());
    std::ranges::sort(removed);
    std::erase_if(pages_, [&removed](const auto& own) {
        return std::ranges::binary_search(removed, static_cast<const SpecialPage*>(own.get()));
    });
    ++revision_;
}

CFRef<CFMutableArrayRef> SpecialPageList::asTicket() const {
    if (pages_.empty()) {
        return nullptr;
    }
    auto ticket =
        CFRef<CFMutableArrayRef>::adopt(CFArrayCreateMutable(kCFAllocatorDefault, count(), &kCFTypeArrayCallBacks));
    for (const auto& page : pages_) {
        if (const auto dictionary = page->asTicket()) {
            CFArrayAppendValue(ticket.get(), dictionary.get());
        }
    }
    return ticket;
}

SpecialPages::iterator SpecialPageList::find(const SpecialPage* page) {
    return std::find_if(pages_.begin(), pages_.end(), [page](const auto& own) { return own.get() == page; });
}

Insert* InsertList::pageAtIndex(CFIndex index) const {
    return dynamic_cast<Insert*>(SpecialPageList::pageAtIndex(index));
}

OSStatus InsertList::add(const SpecialPages& pages) {
    const auto startsBefore = [](const auto& left, const auto& right) {
        return left->startPage() < right->startPage();
    };
    SpecialPages added;
    added.reserve(pages.size());
    for (const auto& page : pages) {
        added.push_back(page->clone());
    }
    std::stable_sort(added.begin(), added.end(), startsBefore);

    SpecialPages merged;
    merged.reserve(pages_.size() + added.size());
    std::merge(std::make_move_iterator(pages_.begin()), std::make_move_iterator(pages_.end()),
               std::make_move_iterator(added.begin()), std::make_move_iterator(added.end()), std::back_inserter(merged),
               startsBefore);
    pages_ = std::move(merged);
    ++revision_;
    return noErr;
}

void InsertList::setFromTicket(CFArrayRef ticket) {
    clear();
    add(PagesOfTicket<Insert>(ticket));
}

ExceptionPage* ExceptionPageList::pageAtIndex(CFIndex index) const {
    return dynamic_cast<ExceptionPage*>(SpecialPageList::pageAtIndex(index));
}

OSStatus ExceptionPageList::add(const SpecialPages& pages) {
    // The pages of the list lie at the bottom, each new one over all before it.
    std::vector<const ExceptionPage*> sources;
    std::vector<PageLayer> layers;
    sources.reserve(pages_.size() + pages.size());
    layers.reserve(pages_.size() + pages.size());
    for (const SpecialPages* group : {&std::as_const(pages_), &pages}) {
        for (const auto& page : *group) {
            if (const auto* source = dynamic_cast<const ExceptionPage*>(page.get())) {
                sources.push_back(source);
                layers.push_back({source->startPage(), source->endPage()});
            }
        }
    }

    SpecialPages merged;
    for (const VisiblePages& visible : visiblePages(layers)) {
        // A page of the list goes on living as its first visible part.
        const bool isOwn = visible.layer < pages_.size() && pages_[visible.layer] != nullptr;
        std::unique_ptr<SpecialPage> part = isOwn ? std::move(pages_[visible.layer]) : sources[visible.layer]->clone();
        part->setStartPage(visible.first);
        static_cast<ExceptionPage&>(*part).setEndPage(visible.last);
        merged.push_back(std::move(part));
    }
    pages_ = std::move(merged);
    ++revision_;
    return noErr;
}

void ExceptionPageList::setFromTicket(CFArrayRef ticket) {
    clear();
    add(PagesOfTicket<ExceptionPage>(ticket));
}
