// Help books: registered by bundle, resolved page by page.

#include "platform/toolbox/help_book.h"

#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFString.h"
#include "platform/toolbox/Help.h"
#include "platform/toolbox/objects.h"

#include <QDir>
#include <QFileInfo>
#include <QMap>
#include <algorithm>

namespace {

QMap<QString, QDir>& books() {
    static QMap<QString, QDir> folders;
    return folders;
}

/// The file when it is there and inside the folder, links followed; else empty.
QString fileInside(const QDir& folder, const QString& path) {
    const QFileInfo file(path);
    const QString canonical = file.isFile() ? file.canonicalFilePath() : QString();
    return canonical.startsWith(folder.canonicalPath() + u'/') ? canonical : QString();
}

QString infoText(CFBundleRef bundle, CFStringRef key) {
    const CFTypeRef value = CFBundleGetValueForInfoDictionaryKey(bundle, key);
    return CFGetTypeID(value) == CFStringGetTypeID() ? toQString(static_cast<CFStringRef>(value)) : QString();
}

}  // namespace

std::optional<QUrl> helpPage(const QString& book, const QString& page) {
    const auto folder = books().constFind(book);
    if (folder == books().constEnd()) {
        return std::nullopt;
    }
    const QString path = page.section(u'#', 0, 0);
    const QString file = fileInside(*folder, folder->filePath(path.isEmpty() ? QStringLiteral("index.html") : path));
    if (file.isEmpty()) {
        return std::nullopt;
    }
    QUrl url = QUrl::fromLocalFile(file);
    url.setFragment(page.section(u'#', 1));
    return url;
}

bool isHelpFile(const QUrl& url) {
    return url.isLocalFile() && std::ranges::any_of(books(), [&](const QDir& folder) {
               return !fileInside(folder, url.toLocalFile()).isEmpty();
           });
}

OSStatus AHRegisterHelpBook(const FSRef* ref) {
    if (!ref) {
        return paramErr;
    }
    const auto path = CFRef<CFStringRef>::adopt(CFStringCreateWithCString(nullptr, ref->path, kCFStringEncodingUTF8));
    const auto url =
        CFRef<CFURLRef>::adopt(CFURLCreateWithFileSystemPath(nullptr, path.get(), kCFURLPOSIXPathStyle, true));
    const auto bundle = CFRef<CFBundleRef>::adopt(url ? CFBundleCreate(nullptr, url.get()) : nullptr);
    if (!bundle) {
        return fnfErr;
    }
    const QString name = infoText(bundle.get(), CFSTR("CFBundleHelpBookName"));
    const QString folderName = infoText(bundle.get(), CFSTR("CFBundleHelpBookFolder"));
    const auto folder =
        CFRef<CFURLRef>::adopt(CFBundleCopyResourceURL(bundle.get(), toCFString(folderName).get(), nullptr, nullptr));
    if (name.isEmpty() || folderName.isEmpty() || !folder) {
        return fnfErr;
    }
    books().insert(name, QDir(toFilePath(folder.get())));
    return noErr;
}
