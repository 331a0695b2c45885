// The plug-in's bundle, a printer and a session for tests of its windows.
#pragma once

#include "core/features/panel_interface.h"
#include "model/settings/plugin_state.h"
#include "model/settings/ppd_ui_dictionary.h"
#include "model/settings/ticket_access.h"
#include "platform/printing/PMSession.h"
#include "platform/toolbox/Controls.h"
#include "platform/toolbox/Menus.h"
#include "tests/platform/toolbox/toolbox_fixture.h"
#include "tests/support/places.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

/// Where the build puts what the bundle reads.
inline const std::filesystem::path kStagedResources = stagePath("plugins/TavroFeatures.plugin/Contents/Resources");
inline const std::string kZR420 = sourcePath("resources/ppd/Tavro-ZR420.ppd");

inline CFRef<CFStringRef> String(const std::string& text) {
    return CFRef<CFStringRef>::adopt(CFStringCreateWithCString(nullptr, text.c_str(), kCFStringEncodingUTF8));
}

inline std::string Text(CFStringRef string) {
    char buffer[4096] = "";
    CFStringGetCString(string, buffer, sizeof buffer, kCFStringEncodingUTF8);
    return buffer;
}

/// A bundle under the plug-in's identifier with its real resources.
class PluginBundle : public TestBundle {
public:
    PluginBundle() : TestBundle(Text(kPDEBundleIdentifier)) {
        add("Info.plist", R"(<?xml version="1.0" encoding="UTF-8"?><plist version="1.0"><dict>)"
                          "<key>CFBundleIdentifier</key><string>" +
                              Text(kPDEBundleIdentifier) +
                              "</string><key>TavroMakerAddress</key><string>https://maker.example/</string>"
                              "</dict></plist>");
        std::filesystem::create_directory_symlink(kStagedResources, contents() / "Resources");
        SetPDEBundle(bundle());
    }
    ~PluginBundle() { SetPDEBundle(nullptr); }
};

/// A session with empty tickets on the printer of a PPD file, its options in the global UI dictionary.
class PluginSession {
public:
    explicit PluginSession(const std::string& ppd = kZR420) {
        EXPECT_EQ(PMCreateSession(&session), noErr);
        settings = AddTicket(kPDE_PMPrintSettingsKey);
        info = AddTicket(kPDE_PMPrinterInfoKey);
        const auto url = CFRef<CFURLRef>::adopt(
            CFURLCreateWithFileSystemPath(nullptr, String(ppd).get(), kCFURLPOSIXPathStyle, false));
        PMPrinter printer = nullptr;
        EXPECT_EQ(PMPrinterCreateFromPPDFile(url.get(), &printer), noErr) << Text(PMGetLastErrorText());
        EXPECT_EQ(PMPrinterWriteInfoTicket(printer, nullptr, info), noErr);
        EXPECT_EQ(ppdOpenCompiledPPDFromTicket(info, &context), noErr);
        EXPECT_EQ(PPDCreateGlobalUIDictionary(context), noErr);
        PMPrinterRelease(printer);
    }
    ~PluginSession() {
        PPDReleaseGlobalUIDictionary();
        ppdCloseCompiledPPDFromTicket(context);
        PMTicketReleaseAndClear(&settings);
        PMTicketReleaseAndClear(&info);
        PMReleaseSession(session);
    }
    PluginSession(const PluginSession&) = delete;
    PluginSession& operator=(const PluginSession&) = delete;

    PMPrintSession session = nullptr;
    PMTicketRef settings = 0;
    PMTicketRef info = 0;
    PPDContext context = nullptr;

private:
    PMTicketRef AddTicket(CFStringRef kind) {
        PMTicketRef ticket = 0;
        EXPECT_EQ(PMTicketCreate(nullptr, kind, &ticket), noErr);
        const auto number = CFRef<CFNumberRef>::adopt(CFNumberCreate(nullptr, kCFNumberSInt32Type, &ticket));
        EXPECT_EQ(PMSessionSetDataInSession(session, kind, number.get()), noErr);
        return ticket;
    }
};

struct MenuItemContent {
    std::string text;
    MenuRefCon refCon;
    OSType command;
    bool operator==(const MenuItemContent&) const = default;
};

inline std::vector<MenuItemContent> Items(ControlRef popup) {
    const MenuRef menu = GetControlPopupMenuHandle(popup);
    std::vector<MenuItemContent> items;
    for (MenuItemIndex item = 1; item <= CountMenuItems(menu); ++item) {
        MenuItemContent content{};
        CFStringRef text = nullptr;
        EXPECT_EQ(CopyMenuItemTextAsCFString(menu, item, &text), noErr);
        content.text = Text(CFRef<CFStringRef>::adopt(text).get());
        EXPECT_EQ(GetMenuItemRefCon(menu, item, &content.refCon), noErr);
        EXPECT_EQ(GetMenuItemCommandID(menu, item, &content.command), noErr);
        items.push_back(content);
    }
    return items;
}
