// The file chooser: Qt's, or the files that a scripted run has arranged.

#include "platform/toolbox/Navigation.h"

#include "platform/foundation/CFURL.h"
#include "platform/toolbox/Automation.h"
#include "platform/toolbox/objects.h"

#include <QApplication>
#include <QFileDialog>
#include <QStandardPaths>
#include <deque>

namespace {

std::deque<CFRef<CFURLRef>>& arrangedFiles() {
    static std::deque<CFRef<CFURLRef>> files;
    return files;
}

CFRef<CFURLRef> nextArrangedFile() {
    auto& files = arrangedFiles();
    if (files.empty()) {
        return nullptr;
    }
    CFRef<CFURLRef> file = files.front();
    files.pop_front();
    return file;
}

CFRef<CFURLRef> askUser(CFStringRef title, ItemCount kindCount, const NavFileKind* kinds) {
    static QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    QFileDialog dialog(QApplication::activeWindow(), toQString(title), folder);
    QStringList filters;
    for (ItemCount i = 0; i < kindCount; ++i) {
        filters.append(QStringLiteral("%1 (%2)").arg(toQString(kinds[i].name), toQString(kinds[i].patterns)));
    }
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setNameFilters(filters);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return nullptr;
    }
    folder = dialog.directory().path();
    const auto path = toCFString(dialog.selectedFiles().front());
    return CFRef<CFURLRef>::adopt(
        CFURLCreateWithFileSystemPath(kCFAllocatorDefault, path.get(), kCFURLPOSIXPathStyle, false));
}

}  // namespace

OSStatus NavChooseFile(CFStringRef title, ItemCount kindCount, const NavFileKind* kinds, CFURLRef* file) {
    if (!file || (kindCount > 0 && !kinds)) {
        return paramErr;
    }
    *file = (toolboxState().scripted ? nextArrangedFile() : askUser(title, kindCount, kinds)).leak();
    return *file ? noErr : userCanceledErr;
}

void AutomationQueueFile(CFURLRef file) {
    arrangedFiles().push_back(CFRef<CFURLRef>::retain(file));
}
