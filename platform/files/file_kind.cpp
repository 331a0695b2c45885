#include "platform/files/file_kind.h"

#include <QByteArray>
#include <QMimeDatabase>

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>

#include <unistd.h>

namespace {

constexpr std::size_t kBytesThatTell = 65536;

QByteArray bytesOf(int file, off_t from) {
    QByteArray bytes(kBytesThatTell, '\0');
    const ssize_t count = pread(file, bytes.data(), kBytesThatTell, std::max<off_t>(from, 0));
    bytes.truncate(std::max<ssize_t>(count, 0));
    return bytes;
}

/// Microsoft's documents are zip archives, known by the names in them, of which the archive has a list at its end.
QString officeTypeOf(int file) {
    struct Row {
        const char* name;
        const char* type;
    };
    static constexpr std::array kParts{
        // a file of the archive, the end of the document's type
        Row{"word/document.xml", "wordprocessingml.document"},
        Row{"xl/workbook.xml", "spreadsheetml.sheet"},
        Row{"ppt/presentation.xml", "presentationml.presentation"},
    };
    const QByteArray names = bytesOf(file, lseek(file, 0, SEEK_END) - static_cast<off_t>(kBytesThatTell));
    const auto row = std::ranges::find_if(kParts, [&names](const Row& each) { return names.contains(each.name); });
    return row == kParts.end()
               ? QString()
               : QLatin1String("application/vnd.openxmlformats-officedocument.") + QLatin1String(row->type);
}

bool isText(const QByteArray& bytes) {
    static constexpr std::string_view kInTexts = "\b\t\n\v\f\r\x1B";
    return !bytes.isEmpty() && std::ranges::all_of(bytes, [](char c) {
        return static_cast<unsigned char>(c) >= ' ' || kInTexts.find(c) != std::string_view::npos;
    });
}

/// What the file has in it. The database takes form feeds for no text, and looks into no archive.
QMimeType kindOf(const QMimeDatabase& database, int file) {
    const QByteArray bytes = bytesOf(file, 0);
    const QMimeType found = database.mimeTypeForData(bytes);
    if (found.isDefault() && isText(bytes)) {
        return database.mimeTypeForName(QStringLiteral("text/plain"));
    }
    const QString office = found.name() == QLatin1String("application/zip") ? officeTypeOf(file) : QString();
    return office.isEmpty() ? found : database.mimeTypeForName(office);
}

/// Whether many kinds of files look like this, so that a name says more.
bool saysLittle(const QMimeType& content) {
    static constexpr std::array kVague{"application/octet-stream", "text/plain", "application/zip",
                                       "application/x-ole-storage", "application/xml"};
    return std::ranges::any_of(kVague,
                               [&content](const char* vague) { return content.name() == QLatin1String(vague); });
}

/// Bytes of which nobody knows what they are cannot be text, whatever the name says.
bool contradicts(const QMimeType& content, const QMimeType& name) {
    return content.isDefault() && name.inherits(QStringLiteral("text/plain"));
}

}  // namespace

bool FileKind::is(const std::string& type) const {
    return std::ranges::find(types, type) != types.end();
}

FileKind kindOfFile(int file, const std::string& name) {
    const QMimeDatabase database;
    QMimeType found = kindOf(database, file);
    for (const QMimeType& named :
         database.mimeTypesForFileName(QString::fromStdString(std::filesystem::path(name).filename().string()))) {
        const bool isNarrower = !found.isDefault() && named.inherits(found.name());
        if (isNarrower || (saysLittle(found) && !contradicts(found, named) && !named.isDefault())) {
            found = named;
            break;
        }
    }
    FileKind kind;
    kind.types.push_back(found.name().toStdString());
    for (const QString& ancestor : found.allAncestors()) {
        kind.types.push_back(ancestor.toStdString());
    }
    if (!found.isDefault()) {
        kind.words = found.comment().toStdString();
    }
    return kind;
}
