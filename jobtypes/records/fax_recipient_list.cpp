#include "jobtypes/records/fax_recipient_list.h"

#include <algorithm>

namespace {

bool SameText(CFStringRef left, CFStringRef right) {
    return left == nullptr || right == nullptr ? left == right : CFStringCompare(left, right, 0) == kCFCompareEqualTo;
}

}  // namespace

FaxRecipientList::FaxRecipientList(CFArrayRef ticket) {
    fromTicket(ticket);
}

FaxRecipientList::FaxRecipientList(const FaxRecipientList& other) {
    for (const FaxRecipientOwner& recipient : other.recipients_) {
        recipients_.emplace_back(new FaxRecipient(*recipient));
    }
}

FaxRecipient* FaxRecipientList::recipientAtIndex(CFIndex index) const {
    return hasIndex(index) ? recipients_[std::size_t(index)].get() : nullptr;
}

void FaxRecipientList::insertAtIndex(FaxRecipient* recipient, CFIndex index) {
    if (recipient != nullptr && (hasIndex(index) || index == count())) {
        recipients_.emplace(recipients_.begin() + index, FaxRecipientRetain(recipient));
    }
}

void FaxRecipientList::removeAtIndex(CFIndex index) {
    if (hasIndex(index)) {
        recipients_.erase(recipients_.begin() + index);
    }
}

void FaxRecipientList::remove(FaxRecipient* recipient) {
    for (CFIndex index = 0; index < count(); ++index) {
        if (recipientAtIndex(index) == recipient) {
            removeAtIndex(index);
        }
    }
}

bool FaxRecipientList::containsRecipient(const FaxRecipient* recipient) const {
    return std::any_of(recipients_.begin(), recipients_.end(), [recipient](const FaxRecipientOwner& element) {
        return SameText(element->firstName(), recipient->firstName()) &&
               SameText(element->lastName(), recipient->lastName()) &&
               SameText(element->faxNumber(), recipient->faxNumber());
    });
}

CFRef<CFArrayRef> FaxRecipientList::toTicket() const {
    const auto made =
        CFRef<CFMutableArrayRef>::adopt(CFArrayCreateMutable(kCFAllocatorDefault, 0, &kCFTypeArrayCallBacks));
    for (const FaxRecipientOwner& recipient : recipients_) {
        CFArrayAppendValue(made.get(), recipient->toTicket().get());
    }
    return CFRef<CFArrayRef>::retain(made.get());
}

void FaxRecipientList::fromTicket(CFArrayRef ticket) {
    removeAll();
    for (CFIndex index = 0; index < CFArrayGetCount(ticket); ++index) {
        const void* element = CFArrayGetValueAtIndex(ticket, index);
        if (CFGetTypeID(element) == CFDictionaryGetTypeID()) {
            recipients_.emplace_back(new FaxRecipient(static_cast<CFDictionaryRef>(element)));
        }
    }
}
