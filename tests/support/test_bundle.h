// A bundle in a temporary folder, for tests that need one of their own.
#pragma once

#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/CFURL.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

/// Writes files into NAME.bundle/Contents and opens it; the folder goes with the object.
class TestBundle {
public:
    explicit TestBundle(const std::string& identifier = "com.example.test") {
        std::string pattern = (std::filesystem::temp_directory_path() / "tavro-bundle-XXXXXX").string();
        root_ = mkdtemp(pattern.data());
        contents_ = root_ / "Test.bundle" / "Contents";
        add("Info.plist", R"(<?xml version="1.0" encoding="UTF-8"?><plist version="1.0"><dict>)"
                          "<key>CFBundleIdentifier</key><string>" +
                              identifier + "</string></dict></plist>");
    }
    ~TestBundle() {
        bundle_ = nullptr;
        std::filesystem::remove_all(root_);
    }
    TestBundle(const TestBundle&) = delete;
    TestBundle& operator=(const TestBundle&) = delete;

    /// Writes a file; the path is relative to Contents.
    void add(const std::string& path, const std::string& text) const {
        const std::filesystem::path file = contents_ / path;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << text;
    }

    /// Writes a nib's window: a Designer file whose top widget holds the given XML.
    void addNib(const std::string& nib, const std::string& window, const std::string& content) const {
        add("Resources/" + nib + ".nib/" + window + ".ui",
            R"(<?xml version="1.0" encoding="UTF-8"?><ui version="4.0"><class>Form</class><widget class="QDialog" name="Form">)" +
                content + "</widget></ui>");
    }

    CFBundleRef bundle() {
        if (!bundle_) {
            const auto path = CFRef<CFStringRef>::adopt(
                CFStringCreateWithCString(nullptr, contents_.parent_path().c_str(), kCFStringEncodingUTF8));
            const auto url =
                CFRef<CFURLRef>::adopt(CFURLCreateWithFileSystemPath(nullptr, path.get(), kCFURLPOSIXPathStyle, true));
            bundle_ = CFRef<CFBundleRef>::adopt(CFBundleCreate(nullptr, url.get()));
        }
        return bundle_.get();
    }

    const std::filesystem::path& contents() const { return contents_; }

private:
    std::filesystem::path root_;
    std::filesystem::path contents_;
    CFRef<CFBundleRef> bundle_;
};
