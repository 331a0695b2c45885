#include "platform/printing/PMSession.h"

#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFRef.h"

#include <utility>

struct OpaquePMPrintSession {
    CFRef<CFMutableDictionaryRef> data = CFRef<CFMutableDictionaryRef>::adopt(
        CFDictionaryCreateMutable(nullptr, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
    PMPrinter printer = nullptr;
};

OSStatus PMCreateSession(PMPrintSession* session) {
    if (session == nullptr) {
        return paramErr;
    }
    *session = new OpaquePMPrintSession;
    return noErr;
}

OSStatus PMReleaseSession(PMPrintSession session) {
    if (session == nullptr) {
        return paramErr;
    }
    PMPrinterRelease(session->printer);
    delete session;
    return noErr;
}

OSStatus PMSessionSetDataInSession(PMPrintSession session, CFStringRef key, CFTypeRef data) {
    if (session == nullptr || key == nullptr || data == nullptr) {
        return paramErr;
    }
    CFDictionarySetValue(session->data.get(), key, data);
    return noErr;
}

OSStatus PMSessionGetDataFromSession(PMPrintSession session, CFStringRef key, CFTypeRef* data) {
    if (session == nullptr || key == nullptr || data == nullptr) {
        return paramErr;
    }
    const CFTypeRef found = CFDictionaryGetValue(session->data.get(), key);
    if (found == nullptr) {
        return kPMKeyNotFound;
    }
    *data = CFRetain(found);
    return noErr;
}

OSStatus PMSessionSetCurrentPMPrinter(PMPrintSession session, PMPrinter printer) {
    if (session == nullptr || printer == nullptr) {
        return paramErr;
    }
    PMPrinterRetain(printer);
    PMPrinterRelease(std::exchange(session->printer, printer));
    return noErr;
}

OSStatus PMSessionGetCurrentPrinter(PMPrintSession session, PMPrinter* printer) {
    if (session == nullptr || printer == nullptr) {
        return paramErr;
    }
    if (session->printer == nullptr) {
        return kPMNoDefaultPrinter;
    }
    *printer = session->printer;
    return noErr;
}
