#include "platform/printing/PMTicket.h"

#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFNumber.h"
#include "platform/foundation/CFPropertyList.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"

#include <limits>
#include <mutex>
#include <unordered_map>
#include <vector>

namespace {

#define kPPDDictKey CFSTR("PPDDict")

CFRef<CFMutableDictionaryRef> makeDictionary() {
    return CFRef<CFMutableDictionaryRef>::adopt(
        CFDictionaryCreateMutable(nullptr, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
}

CFRef<CFTypeRef> deepCopy(CFTypeRef value) {
    return CFRef<CFTypeRef>::adopt(CFPropertyListCreateDeepCopy(nullptr, value, kCFPropertyListImmutable));
}

template <typename Visit>
void forEachPair(CFDictionaryRef dictionary, Visit visit) {
    const auto count = static_cast<std::size_t>(CFDictionaryGetCount(dictionary));
    std::vector<const void*> keys(count);
    std::vector<const void*> values(count);
    CFDictionaryGetKeysAndValues(dictionary, keys.data(), values.data());
    for (std::size_t i = 0; i < count; ++i) {
        visit(keys[i], values[i]);
    }
}

bool isString(CFTypeRef object) {
    return CFGetTypeID(object) == CFStringGetTypeID();
}

/// The pairs of strings of a PPD dictionary, copied.
CFRef<CFMutableDictionaryRef> copyPPDPairs(CFDictionaryRef pairs) {
    auto copy = makeDictionary();
    forEachPair(pairs, [&](CFTypeRef key, CFTypeRef value) {
        if (isString(key) && isString(value)) {
            CFDictionarySetValue(copy.get(), deepCopy(key).get(), deepCopy(value).get());
        }
    });
    return copy;
}

struct Ticket {
    CFRef<CFMutableDictionaryRef> items = makeDictionary();
    CFRef<CFMutableDictionaryRef> ppdPairs;  // made when it is first asked for
};

/// All living tickets by their handles. Handles count up and start over only after two thousand million tickets, so
/// that a stale one is noticed instead of meaning another ticket.
class TicketTable {
public:
    PMTicketRef add() {
        const std::lock_guard lock(mutex_);
        do {
            last_ = last_ == std::numeric_limits<PMTicketRef>::max() ? 1 : last_ + 1;
        } while (tickets_.contains(last_));
        tickets_.try_emplace(last_);
        return last_;
    }

    Ticket* find(PMTicketRef handle) {
        const std::lock_guard lock(mutex_);
        const auto found = tickets_.find(handle);
        return found == tickets_.end() ? nullptr : &found->second;
    }

    bool remove(PMTicketRef handle) {
        const std::lock_guard lock(mutex_);
        return tickets_.erase(handle) > 0;
    }

private:
    std::mutex mutex_;  // of the table; a ticket is one thread's at a time
    PMTicketRef last_ = 0;
    std::unordered_map<PMTicketRef, Ticket> tickets_;
};

TicketTable& tickets() {
    // Never destroyed: a plug-in may release its tickets while the process ends.
    static auto* const table = new TicketTable;
    return *table;
}

OSStatus setItem(PMTicketRef handle, CFStringRef key, CFTypeRef value) {
    if (key == nullptr || value == nullptr) {
        return paramErr;
    }
    Ticket* const ticket = tickets().find(handle);
    if (ticket == nullptr) {
        return kPMInvalidTicket;
    }
    const auto copy = deepCopy(value);
    if (!copy) {
        return paramErr;
    }
    CFDictionarySetValue(ticket->items.get(), deepCopy(key).get(), copy.get());
    return noErr;
}

template <typename T>
OSStatus getItem(PMTicketRef handle, UInt32 node1, UInt32 node2, CFStringRef key, CFTypeID type, T* value) {
    if (key == nullptr || value == nullptr || node1 != kPMTopLevel || node2 != kPMTopLevel) {
        return paramErr;
    }
    const Ticket* const ticket = tickets().find(handle);
    if (ticket == nullptr) {
        return kPMInvalidTicket;
    }
    const CFTypeRef item = CFDictionaryGetValue(ticket->items.get(), key);
    if (item == nullptr) {
        return kPMKeyNotFound;
    }
    if (CFGetTypeID(item) != type) {
        return kPMItemTypeMismatch;
    }
    *value = static_cast<T>(item);
    return noErr;
}

}  // namespace

OSStatus PMTicketCreate(CFAllocatorRef, CFStringRef kind, PMTicketRef* ticket) {
    if (kind == nullptr || ticket == nullptr) {
        return paramErr;
    }
    *ticket = tickets().add();
    return noErr;
}

OSStatus PMTicketReleaseAndClear(PMTicketRef* handle) {
    if (handle == nullptr) {
        return paramErr;
    }
    return tickets().remove(std::exchange(*handle, 0)) ? noErr : kPMInvalidTicket;
}

OSStatus PMTicketSetCFNumber(PMTicketRef ticket, CFStringRef, CFStringRef key, CFNumberRef value, Boolean) {
    return setItem(ticket, key, value);
}

OSStatus PMTicketSetCFString(PMTicketRef ticket, CFStringRef, CFStringRef key, CFStringRef value, Boolean) {
    return setItem(ticket, key, value);
}

OSStatus PMTicketSetCFBoolean(PMTicketRef ticket, CFStringRef, CFStringRef key, CFBooleanRef value, Boolean) {
    return setItem(ticket, key, value);
}

OSStatus PMTicketSetCFArray(PMTicketRef ticket, CFStringRef, CFStringRef key, CFArrayRef value, Boolean) {
    return setItem(ticket, key, value);
}

OSStatus PMTicketSetCFDictionary(PMTicketRef ticket, CFStringRef, CFStringRef key, CFDictionaryRef value, Boolean) {
    return setItem(ticket, key, value);
}

OSStatus PMTicketGetCFNumber(PMTicketRef ticket, UInt32 node1, UInt32 node2, CFStringRef key, CFNumberRef* value) {
    return getItem(ticket, node1, node2, key, CFNumberGetTypeID(), value);
}

OSStatus PMTicketGetCFString(PMTicketRef ticket, UInt32 node1, UInt32 node2, CFStringRef key, CFStringRef* value) {
    return getItem(ticket, node1, node2, key, CFStringGetTypeID(), value);
}

OSStatus PMTicketGetCFBoolean(PMTicketRef ticket, UInt32 node1, UInt32 node2, CFStringRef key, CFBooleanRef* value) {
    return getItem(ticket, node1, node2, key, CFBooleanGetTypeID(), value);
}

OSStatus PMTicketGetCFArray(PMTicketRef ticket, UInt32 node1, UInt32 node2, CFStringRef key, CFArrayRef* value) {
    return getItem(ticket, node1, node2, key, CFArrayGetTypeID(), value);
}

OSStatus PMTicketGetCFDictionary(PMTicketRef ticket, UInt32 node1, UInt32 node2, CFStringRef key,
                                 CFDictionaryRef* value) {
    return getItem(ticket, node1, node2, key, CFDictionaryGetTypeID(), value);
}

OSStatus PMTicketReleaseItem(PMTicketRef handle, UInt32 node1, CFStringRef key) {
    if (key == nullptr || node1 != kPMTopLevel) {
        return paramErr;
    }
    Ticket* const ticket = tickets().find(handle);
    if (ticket == nullptr) {
        return kPMInvalidTicket;
    }
    if (!CFDictionaryContainsKey(ticket->items.get(), key)) {
        return kPMKeyNotFound;
    }
    CFDictionaryRemoveValue(ticket->items.get(), key);
    return noErr;
}

OSStatus PMTicketGetPPDDict(PMTicketRef handle, UInt32 node1, CFMutableDictionaryRef* dictionary) {
    if (dictionary == nullptr || node1 != kPMTopLevel) {
        return paramErr;
    }
    Ticket* const ticket = tickets().find(handle);
    if (ticket == nullptr) {
        return kPMInvalidTicket;
    }
    if (!ticket->ppdPairs) {
        ticket->ppdPairs = makeDictionary();
    }
    *dictionary = ticket->ppdPairs.get();
    return noErr;
}

CFMutableDictionaryRef PMTicketCopyItems(PMTicketRef handle) {
    const Ticket* const ticket = tickets().find(handle);
    if (ticket == nullptr) {
        return nullptr;
    }
    // Nobody can change what a ticket has copied, so a copy of its items may have the very same values.
    auto copy = CFRef<CFMutableDictionaryRef>::adopt(CFDictionaryCreateMutableCopy(nullptr, 0, ticket->items.get()));
    const auto pairs = copyPPDPairs(ticket->ppdPairs.get());
    if (CFDictionaryGetCount(pairs.get()) > 0) {
        CFDictionarySetValue(copy.get(), kPPDDictKey, pairs.get());
    }
    return copy.leak();
}

OSStatus PMTicketSetItems(PMTicketRef handle, CFDictionaryRef items) {
    if (items == nullptr) {
        return paramErr;
    }
    Ticket* const ticket = tickets().find(handle);
    if (ticket == nullptr) {
        return kPMInvalidTicket;
    }
    const auto copied = deepCopy(items);
    if (!copied) {
        return paramErr;
    }
    const auto copy = CFRef<CFMutableDictionaryRef>::adopt(
        CFDictionaryCreateMutableCopy(nullptr, 0, static_cast<CFDictionaryRef>(copied.get())));
    const CFTypeRef pairs = CFDictionaryGetValue(copy.get(), kPPDDictKey);
    ticket->ppdPairs =
        CFGetTypeID(pairs) == CFDictionaryGetTypeID() ? copyPPDPairs(static_cast<CFDictionaryRef>(pairs)) : nullptr;
    CFDictionaryRemoveValue(copy.get(), kPPDDictKey);
    ticket->items = copy;
    return noErr;
}
