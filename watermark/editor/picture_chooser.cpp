#include "watermark/editor/picture_chooser.h"

#include "platform/foundation/CFString.h"
#include "platform/foundation/CFURL.h"
#include "platform/toolbox/Navigation.h"
#include "watermark/editor/editor_texts.h"
#include "watermark/records/watermark_record.h"

#include <QFile>
#include <QImageReader>
#include <QStringList>
#include <array>

namespace {

CFRef<CFStringRef> StringOf(const QString& text) {
    return CFRef<CFStringRef>::adopt(CFStringCreateWithCharacters(
        nullptr, reinterpret_cast<const UniChar*>(text.utf16()), static_cast<CFIndex>(text.size())));
}

}  // namespace

QString AskForPicture() {
    QStringList patterns;
    for (const QByteArray& format : QImageReader::supportedImageFormats()) {
        patterns.append(QStringLiteral("*.") + QString::fromLatin1(format));
    }
    const CFRef<CFStringRef> name = StringOf(EditorText("Picture Files"));
    const CFRef<CFStringRef> names = StringOf(patterns.join(u' '));
    const NavFileKind kind{name.get(), names.get()};
    CFURLRef chosen = nullptr;
    if (NavChooseFile(StringOf(EditorText("Picture Title")).get(), 1, &kind, &chosen) != noErr) {
        return {};
    }
    const auto file = CFRef<CFURLRef>::adopt(chosen);
    std::array<char, sizeof(WatermarkRecord::filePath)> path{};
    return CFURLGetFileSystemRepresentation(file.get(), true, reinterpret_cast<UInt8*>(path.data()), path.size())
               ? QFile::decodeName(path.data())
               : QString();
}
