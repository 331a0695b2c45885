#include "platform/foundation/CFURL.h"

#include "platform/foundation/url_path.h"

#include <QHashFunctions>
#include <QUrl>

#include <algorithm>
#include <filesystem>

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
template <typename Path>
Path withSlash(Path path, bool slash) {
    while (path.size() > 1 && path.endsWith('/')) {
        path.chop(1);
    }
    return slash && !path.endsWith('/') ? path + '/' : path;
}

/// The absolute path of a file address in the file system's bytes; empty for other addresses.
QByteArray fileBytesOf(CFURLRef url) {
    const CFURLObject* object = checked(url);
    // A host would be another machine's file.
    if (!object || !object->url.isLocalFile() || !object->url.host().isEmpty()) {
        return {};
    }
    // Decoded by hand: the class has no room for bytes that are no UTF-8.
    const QByteArray path = QByteArray::fromPercentEncoding(object->url.path(QUrl::FullyEncoded).toLatin1());
    return path.contains('\0') ? QByteArray() : withSlash(path, false);
}

CFRef<CFURLRef> makeFileURL(QByteArray path, bool isDirectory) {
    if (path.isEmpty() || path.contains('\0')) {
        return nullptr;
    }
    if (!path.startsWith('/')) {
        std::error_code ignored;
        path.prepend(QByteArray::fromStdString(std::filesystem::current_path(ignored).string()) + '/');
    }
    while (path.startsWith("//")) {
        path.remove(0, 1);  // two slashes would begin a host's name
    }
    return CFRef<CFURLRef>::adopt(new CFURLObject(
        QUrl::fromEncoded("file://" + withSlash(path, isDirectory).toPercentEncoding("/"), QUrl::StrictMode)));
}

}  // namespace

QString filePathOf(CFURLRef url) {
    return QString::fromUtf8(fileBytesOf(url));
}

CFRef<CFURLRef> makeFileURL(const QString& path, bool isDirectory) {
    return makeFileURL(path.toUtf8(), isDirectory);
}

CFURLRef CFURLCreateWithFileSystemPath(CFAllocatorRef, CFStringRef path, CFURLPathStyle style, Boolean isDirectory) {
    return style == kCFURLPOSIXPathStyle ? makeFileURL(textOf(path), isDirectory).leak() : nullptr;
}

CFURLRef CFURLCreateFromFileSystemRepresentation(CFAllocatorRef, const UInt8* path, CFIndex length,
                                                 Boolean isDirectory) {
    return path ? makeFileURL(QByteArray(reinterpret_cast<const char*>(path), length), isDirectory).leak() : nullptr;
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
    appended.setPath(withSlash(withSlash(appended.path(QUrl::FullyEncoded), true) +
                                   QString::fromLatin1(name.toUtf8().toPercentEncoding("/")),
                               isDirectory),
                     QUrl::StrictMode);
    return new CFURLObject(appended);
}

CFStringRef CFURLGetString(CFURLRef url) {
    const CFURLObject* object = checked(url);
    return object ? object->text.get() : nullptr;
}

Boolean CFURLGetFileSystemRepresentation(CFURLRef url, Boolean, UInt8* buffer, CFIndex bufferSize) {
    const QByteArray path = fileBytesOf(url);
    if (path.isEmpty() || !buffer || path.size() >= bufferSize) {
        return false;
    }
    std::copy_n(path.constData(), path.size() + 1, buffer);
    return true;
}

Boolean CFURLGetFSRef(CFURLRef url, FSRef* ref) {
    const QByteArray path = fileBytesOf(url);
    if (!ref || path.isEmpty() || path.size() >= CFIndex(sizeof ref->path) || access(path.constData(), F_OK) != 0) {
        return false;
    }
    std::copy_n(path.constData(), path.size() + 1, ref->path);
    return true;
}
