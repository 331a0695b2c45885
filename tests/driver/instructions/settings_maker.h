// Tickets out of property lists as people read them: {Key = value; …}.
#pragma once

#include "driver/instructions/read_instructions.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFNumber.h"
#include "platform/foundation/CFPropertyList.h"
#include "tests/support/cf_values.h"

#include <string>

/// A ticket whose items are those of an XML property list's dictionary, without the frame around it.
class TestTicket {
public:
    explicit TestTicket(const std::string& items = {}) {
        PMTicketCreate(nullptr, kPDE_PMPrintSettingsKey, &ticket_);
        const auto data =
            makeCFData("<?xml version=\"1.0\"?><plist version=\"1.0\"><dict>" + items + "</dict></plist>");
        const auto list = CFRef<CFTypeRef>::adopt(
            CFPropertyListCreateFromXMLData(nullptr, data.get(), kCFPropertyListImmutable, nullptr));
        isRead_ = list && PMTicketSetItems(ticket_, static_cast<CFDictionaryRef>(list.get())) == noErr;
    }
    ~TestTicket() { PMTicketReleaseAndClear(&ticket_); }
    TestTicket(const TestTicket&) = delete;
    TestTicket& operator=(const TestTicket&) = delete;

    [[nodiscard]] PMTicketRef get() const { return ticket_; }
    [[nodiscard]] bool isRead() const { return isRead_; }

private:
    PMTicketRef ticket_ = 0;
    bool isRead_ = false;
};

// Entries of a dictionary.
inline std::string entry(const std::string& key, const std::string& value) {
    return "<key>" + key + "</key>" + value;
}
inline std::string number(const std::string& key, long value) {
    return entry(key, "<integer>" + std::to_string(value) + "</integer>");
}
inline std::string text(const std::string& key, const std::string& value) {
    return entry(key, "<string>" + value + "</string>");
}
inline std::string flag(const std::string& key, bool value) {
    return entry(key, value ? "<true/>" : "<false/>");
}
inline std::string dict(const std::string& key, const std::string& entries) {
    return entry(key, "<dict>" + entries + "</dict>");
}
