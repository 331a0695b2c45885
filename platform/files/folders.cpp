#include "platform/files/folders.h"

#include <QStandardPaths>

#include <algorithm>

#include <sys/stat.h>

namespace {

/// Makes the folder and those above it that are missing, for the user alone, as the XDG base directory rules ask.
bool makeFolder(const QByteArray& path) {
    for (qsizetype slash = path.indexOf('/', 1); slash > 0; slash = path.indexOf('/', slash + 1)) {
        mkdir(path.first(slash).constData(), 0700);  // most of them exist; the last one tells
    }
    return mkdir(path.constData(), 0700) == 0;
}

bool isFolder(const QByteArray& path) {
    struct stat status;
    return stat(path.constData(), &status) == 0 && S_ISDIR(status.st_mode);
}

}  // namespace

OSStatus FSFindFolder(SInt16 domain, OSType kind, Boolean create, FSRef* folder) {
    if (domain != kUserDomain || !folder || (kind != kPreferencesFolderType && kind != kApplicationSupportFolderType)) {
        return paramErr;
    }
    const QByteArray base =
        QStandardPaths::writableLocation(kind == kPreferencesFolderType ? QStandardPaths::GenericConfigLocation
                                                                        : QStandardPaths::GenericDataLocation)
            .toUtf8();
    const QByteArray path = base + "/tavro";
    if (base.isEmpty() || path.size() >= static_cast<qsizetype>(sizeof folder->path) ||
        !(isFolder(path) || (create && makeFolder(path)))) {
        return fnfErr;
    }
    std::copy_n(path.constData(), path.size() + 1, folder->path);
    return noErr;
}
