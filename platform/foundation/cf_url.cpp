#include "platform/foundation/CFURL.h"

#include "platform/foundation/url_path.h"

#include <QDir>
#include <QHashFunctions>
#include <QUrl>

#include <algorithm>

#include <unistd.h>

struct CFURLObject final : CFObject {
    static constexpr ObjectKind kKind = ObjectKind::URL;

    explicit CFURLObject(const QUrl& value)
        : CFObject(kKind), url(value), text(makeString(QString::fromLatin1(url.toEncoded()))) {}
    bool equals(const CFObject& other) const override { return url == static_cast<const CFURLObject&>(other).url; }
    CFHashCode hash() const override { return qHash(url); }

    const QUrl url;
    const CFRef<CFStringRef> text;
};

namespace {

/// Exactly one slash, or none, at the end of a path; the root folder keeps its own.
QString withSlash(QString path, bool slash) {
    while (path.size() > 1 && path.endsWith(u'/')) {
        path.chop(1);
    }
    return slash && !path.endsWith(u'/') ? path + u'/' : path;
}

}  // namespace

QString filePathOf(CFURLRef url) {
    const CFURLObject* object = checked(url);
    // A host would be another machine's file.
    if (!object || !object->url.isLocalFile() || !object->url.host().isEmpty()) {
        return {};
    }
    const QString path = object->url.path(QUrl::FullyDecoded);
    return path.contains(QChar::Null) ? QString() : withSlash(path, false);
}

CFRef<CFURLRef> makeFileURL(const QString& path, bool isDirectory) {
    QString absolute = QDir::current().absoluteFilePath(path);
    while (absolute.startsWith(u"//")) {
        absolute.remove(0, 1);  // two slashes would begin a host's name
    }
    return CFRef<CFURLRef>::adopt(new CFURLObject(QUrl::fromLocalFile(withSlash(absolute, isDirectory))));
}

CFURLRef CFURLCreateWithFileSystemPath(CFAllocatorRef, CFStringRef path, CFURLPathStyle style, Boolean isDirectory) {
    const QString text = textOf(path);
    if (text.isEmpty() || text.contains(QChar::Null) || style != kCFURLPOSIXPathStyle) {
        return nullptr;
    }
    return makeFileURL(text, isDirectory).leak();
}

CFURLRef CFURLCreateWithString(CFAllocatorRef, CFStringRef text, CFURLRef base) {
    const QUrl url(textOf(text), QUrl::StrictMode);
    return base || !url.isValid() || url.isRelative() ? nullptr : new CFURLObject(url);
}

CFURLRef CFURLCreateCopyAppendingPathComponent(CFAllocatorRef, CFURLRef url, CFStringRef component,
                                               Boolean isDirectory) {
    const CFURLObject* object = checked(url);
    const QString name = textOf(component);
    if (!object || name.isEmpty() || name.contains(QChar::Null)) {
        return nullptr;
    }
    QUrl appended = object->url;
    appended.setPath(withSlash(withSlash(appended.path(QUrl::FullyDecoded), true) + name, isDirectory),
                     QUrl::DecodedMode);
    return new CFURLObject(appended);
}

CFStringRef CFURLGetString(CFURLRef url) {
    const CFURLObject* object = checked(url);
    return object ? object->text.get() : nullptr;
}

Boolean CFURLGetFileSystemRepresentation(CFURLRef url, Boolean, UInt8* buffer, CFIndex bufferSize) {
    const QByteArray path = filePathOf(url).toUtf8();
    if (path.isEmpty() || !buffer || path.size() >= bufferSize) {
        return false;
    }
    std::copy_n(path.constData(), path.size() + 1, buffer);
    return true;
}

Boolean CFURLGetFSRef(CFURLRef url, FSRef* ref) {
    const QByteArray path = filePathOf(url).toUtf8();
    if (!ref || path.isEmpty() || path.size() >= CFIndex(sizeof ref->path) || access(path.constData(), F_OK) != 0) {
        return false;
    }
    std::copy_n(path.constData(), path.size() + 1, ref->path);
    return true;
}
