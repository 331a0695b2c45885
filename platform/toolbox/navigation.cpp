// The file chooser: Qt's, or the files that a scripted run has arranged.

#include "platform/toolbox/Navigation.h"

#include "platform/foundation/CFURL.h"
#include "platform/toolbox/Automation.h"
#include "platform/toolbox/objects.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
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

QString& lastFolder() {
    static QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return folder;
}

QString filterOf(const NavFileKind& kind) {
    return QStringLiteral("%1 (%2)").arg(toQString(kind.name), toQString(kind.patterns));
}

CFRef<CFURLRef> run(QFileDialog& dialog) {
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return nullptr;
    }
    lastFolder() = dialog.directory().path();
    const auto path = toCFString(dialog.selectedFiles().front());
    return CFRef<CFURLRef>::adopt(
        CFURLCreateWithFileSystemPath(kCFAllocatorDefault, path.get(), kCFURLPOSIXPathStyle, false));
}

CFRef<CFURLRef> askForFile(CFStringRef title, ItemCount kindCount, const NavFileKind* kinds) {
    QFileDialog dialog(QApplication::activeWindow(), toQString(title), lastFolder());
    QStringList filters;
    for (ItemCount i = 0; i < kindCount; ++i) {
        filters.append(filterOf(kinds[i]));
    }
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setNameFilters(filters);
    return run(dialog);
}

CFRef<CFURLRef> askForNewFile(CFStringRef title, const NavFileKind& kind, CFStringRef name) {
    QFileDialog dialog(QApplication::activeWindow(), toQString(title), lastFolder(), filterOf(kind));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QFileInfo(toQString(kind.patterns)).suffix());
    dialog.selectFile(toQString(name));
    return run(dialog);
}

}  // namespace

OSStatus NavChooseFile(CFStringRef title, ItemCount kindCount, const NavFileKind* kinds, CFURLRef* file) {
    if (!file || (kindCount > 0 && !kinds)) {
        return paramErr;
    }
    *file = (toolboxState().scripted ? nextArrangedFile() : askForFile(title, kindCount, kinds)).leak();
    return *file ? noErr : userCanceledErr;
}

OSStatus NavChooseNewFile(CFStringRef title, const NavFileKind* kind, CFStringRef name, CFURLRef* file) {
    if (!file || !kind) {
        return paramErr;
    }
    *file = (toolboxState().scripted ? nextArrangedFile() : askForNewFile(title, *kind, name)).leak();
    return *file ? noErr : userCanceledErr;
}

void AutomationQueueFile(CFURLRef file) {
    arrangedFiles().push_back(CFRef<CFURLRef>::retain(file));
}
