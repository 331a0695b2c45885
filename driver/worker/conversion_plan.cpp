#include "driver/worker/conversion_plan.h"

#include "driver/worker/office_types.h"
#include "platform/foundation/message.h"
#include "platform/foundation/text.h"
#include "platform/printing/PMPrinter.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <sstream>

#include <unistd.h>

namespace {

using Way = ConversionPlan::Way;

struct NameRow {
    const char* name;
    const char* atServer;
};
constexpr std::array kOtherNames{
    // type, what the print server calls it
    NameRow{"image/x-eps", "application/postscript"},
    NameRow{"image/svg+xml-compressed", "image/svg+xml"},
};

struct RefusalRow {
    const char* beginning;
    const char* reason;
};
constexpr std::array kRefusals{
    // how its type begins, what it is
    RefusalRow{"video/", "is a film, and cannot be printed"},
    RefusalRow{"audio/", "is a sound recording, and cannot be printed"},
    RefusalRow{"font/", "is a font, and cannot be printed"},
    RefusalRow{"application/x-executable", "is a program, and cannot be printed"},
    RefusalRow{"application/x-sharedlib", "is a program, and cannot be printed"},
    RefusalRow{"application/x-pie-executable", "is a program, and cannot be printed"},
    RefusalRow{"application/x-ms-dos-executable", "is a program, and cannot be printed"},
    RefusalRow{"application/vnd.microsoft.portable-executable", "is a program, and cannot be printed"},
    RefusalRow{"application/x-zerosize", "is empty, and cannot be printed"},
    RefusalRow{"application/zip", "is an archive of files, which have to be unpacked first, and cannot be printed"},
    RefusalRow{"application/gzip", "is an archive of files, which have to be unpacked first, and cannot be printed"},
    RefusalRow{"application/x-tar", "is an archive of files, which have to be unpacked first, and cannot be printed"},
    RefusalRow{"application/x-7z-compressed",
               "is an archive of files, which have to be unpacked first, and cannot be printed"},
    RefusalRow{"application/vnd.rar", "is an archive of files, which have to be unpacked first, and cannot be printed"},
    RefusalRow{"application/x-rar", "is an archive of files, which have to be unpacked first, and cannot be printed"},
};

const char* nameAtServer(const std::string& type) {
    const auto row = std::ranges::find_if(kOtherNames, [&type](const NameRow& each) { return type == each.name; });
    return row == kOtherNames.end() ? type.c_str() : row->atServer;
}

/// Pictures, films and the like that are written as text are not meant to be read as such.
bool isReadAsText(const FileKind& kind) {
    return kind.type().starts_with("text/") || kind.type().starts_with("application/");
}

/// What filters there are for, though perhaps not here.
constexpr std::array kUsual{"image/png", "image/jpeg", "image/gif", "image/tiff", "application/postscript",
                            "text/plain"};

std::string refusalOf(const FileKind& kind) {
    if (std::ranges::any_of(kUsual, [&kind](const char* type) { return kind.type() == type; })) {
        return messageText("can be printed only where the print server's filters for it are installed (cups-filters)");
    }
    for (const std::string& type : kind.types) {
        const auto row = std::ranges::find_if(
            kRefusals, [&type](const RefusalRow& each) { return type.starts_with(each.beginning); });
        if (row != kRefusals.end()) {
            return messageText(row->reason);
        }
    }
    return kind.words.empty() ? messageText("is a file of an unknown kind, and cannot be printed")
                              : messageText("is a file of a kind that cannot be printed (%1)", {kind.words});
}

}  // namespace

ConversionPlan planConversion(const FileKind& kind) {
    for (const std::string& type : kind.types) {
        if (type == "application/pdf") {
            return {Way::copy, type, {}};
        }
        if (isOfficeType(type)) {
            return officeProgram().empty()
                       ? ConversionPlan{Way::none, type,
                                        messageText("can be printed only where LibreOffice is installed")}
                       : ConversionPlan{Way::office, type, {}};
        }
        const char* const name = nameAtServer(type);
        if ((type != "text/plain" || isReadAsText(kind)) && PMCanWritePDF(makeString(name).get())) {
            return {Way::filters, name, {}};
        }
    }
    return {Way::none, kind.type(), refusalOf(kind)};
}

std::string officeProgram() {
    const char* const folders = std::getenv("PATH");
    std::istringstream places(folders == nullptr ? "/usr/local/bin:/usr/bin:/bin" : folders);
    for (std::string folder; std::getline(places, folder, ':');) {
        for (const char* name : {"/soffice", "/libreoffice"}) {
            if (folder.starts_with('/') && access((folder + name).c_str(), X_OK) == 0) {
                return folder + name;
            }
        }
    }
    return {};
}
