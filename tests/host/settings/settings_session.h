// Sessions with settings of all kinds, written as XML.
#pragma once

#include "host/settings/print_session.h"
#include "platform/foundation/CFBundle.h"
#include "platform/foundation/text.h"
#include "tests/platform/files/temporary_folder.h"
#include "tests/support/places.h"

#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <string>

class SettingsTest : public testing::Test {
protected:
    /// A session with items in its print settings ticket and choices in its PPD dictionary, both in XML.
    std::unique_ptr<PrintSession> session(const std::string& items, const std::string& choices = {}) const {
        const std::string path = folder / "settings.plist";
        std::ofstream(path) << "<plist version=\"1.0\"><dict><key>PMPrintSettingsTicket</key><dict>" << items
                            << "<key>PPDDict</key><dict>" << choices << "</dict></dict></dict></plist>";
        auto settings = readSettingsFile(path);
        EXPECT_TRUE(settings) << settings.failure().line;
        return std::make_unique<PrintSession>(printer, *settings, nullptr, "job");
    }

    static std::string element(const std::string& key, const std::string& value) {
        return "<key>" + key + "</key>" + value;
    }
    static std::string number(const std::string& key, int value) {
        return element(key, "<integer>" + std::to_string(value) + "</integer>");
    }
    static std::string item(const std::string& name, const std::string& value) {
        return element("com.tavro.print." + name, value);
    }
    static std::string numberItem(const std::string& name, int value) {
        return number("com.tavro.print." + name, value);
    }
    static std::string dictionary(const std::string& content) { return "<dict>" + content + "</dict>"; }
    static std::string choice(const std::string& keyword, const std::string& option) {
        return element(keyword, "<string>" + option + "</string>");
    }
    static std::string cover(const char* which, int sides, const std::string& stock = number("Size", 1)) {
        return item(std::string("SpecialPages.") + which,
                    dictionary(number("SidesImaged", sides) + element("Stock", dictionary(stock))));
    }
    static std::string jobType(int type) { return item("JobType", dictionary(number("JobType", type))); }

    TemporaryFolder folder;
    CFRef<CFBundleRef> bundle =
        CFRef<CFBundleRef>::adopt(CFBundleCreate(nullptr, makeFileURL(stagePath("TavroPrint.bundle"), true).get()));
    Printer printer = *openPPD(sourcePath("resources/ppd/Tavro-ZR420.ppd"));
};
