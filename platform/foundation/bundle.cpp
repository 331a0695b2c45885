#include "platform/foundation/bundle.h"

#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFPropertyList.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/locale_digits.h"
#include "platform/foundation/strings_table.h"
#include "platform/foundation/terminal_text.h"
#include "platform/foundation/text_position.h"
#include "platform/foundation/url_path.h"
#include "platform/foundation/user_languages.h"

#include <QFile>
#include <QFileInfo>
#include <QLocale>

#include <algorithm>
#include <cstdio>
#include <vector>

#include <dlfcn.h>

namespace {

/// All living bundles, oldest first. There is never more than a handful.
std::vector<CFBundleObject*>& livingBundles() {
    static auto& bundles = *new std::vector<CFBundleObject*>;
    return bundles;
}

CFRef<CFStringRef>& lastError() {
    static auto& error = *new CFRef<CFStringRef>;
    return error;
}

/// The whole file, or null with the reason.
CFRef<CFDataRef> readFile(const QString& path, CFRef<CFStringRef>* error) {
    QFile file(path);
    if (const QFileInfo found(path); found.exists() && !found.isFile()) {  // a pipe would wait for its writer
        *error = makeString(messageOf("not a plain file"));
        return nullptr;
    }
    if (!file.open(QFile::ReadOnly)) {
        *error = makeString(file.errorString());
        return nullptr;
    }
    // Of what is too large one byte more than is allowed, so that the reader sees it; no more, since QFile makes room.
    return CFRef<CFDataRef>::adopt(
        new CFDataObject(file.read(std::min<qint64>(file.size(), kPropertyListMaximumBytes + 1))));
}

CFRef<CFDictionaryRef> readInfo(const QString& path, CFRef<CFStringRef>* error) {
    const CFRef<CFDataRef> data = readFile(path, error);
    if (!data) {
        return nullptr;
    }
    CFStringRef fault = nullptr;
    auto list =
        CFRef<CFTypeRef>::adopt(CFPropertyListCreateFromXMLData(nullptr, data.get(), kCFPropertyListImmutable, &fault));
    *error = CFRef<CFStringRef>::adopt(fault);
    if (list && CFGetTypeID(list.get()) != CFDictionaryGetTypeID()) {
        *error = makeString(messageOf("not a dictionary"));
        return nullptr;
    }
    return CFRef<CFDictionaryRef>::adopt(static_cast<CFDictionaryRef>(list.leak()));
}

/// Whether a name from outside stays in the folder that it is looked for in.
bool staysInside(const QString& name) {
    return !name.contains(QChar::Null) && !name.split(u'/').contains(QStringLiteral(".."));
}

QString infoText(CFBundleRef bundle, CFStringRef key) {
    return textOf(static_cast<CFStringRef>(CFDictionaryGetValue(bundle->info.get(), key)));
}

CFRef<CFURLRef> urlInContents(CFBundleRef bundle, const QString& path) {
    return makeFileURL(bundle->inContents(path), true);
}

/// The user's languages that the folder has texts of, FOLDER/LANGUAGE.lproj; English in any case.
QStringList languagesOfFolder(const QString& folder) {
    QStringList languages = userLanguages();
    languages.removeIf([&folder](const QString& language) {
        return language != QLatin1String("en") &&
               !QFileInfo::exists(folder + u'/' + language + QStringLiteral(".lproj"));
    });
    return languages;
}

}  // namespace

CFBundleObject::CFBundleObject(QString folder, CFRef<CFDictionaryRef> infoDictionary)
    : CFObject(kKind),
      root(std::move(folder)),
      info(std::move(infoDictionary)),
      languages(languagesOfFolder(inContents(QStringLiteral("Resources")))) {
    livingBundles().push_back(this);
}

// Code stays loaded: the last owner may be an instance whose own function is running, and libraries that the code
// has brought along do not survive a second load.
CFBundleObject::~CFBundleObject() {
    std::erase(livingBundles(), this);
    forgetFactories(*this);
}

namespace {

QString placeOfTable(const QString& name, const QString& language) {
    return language + QStringLiteral(".lproj/") + name + QStringLiteral(".strings");
}

}  // namespace

CFDictionaryRef CFBundleObject::table(const QString& name, const QString& language) {
    const QString place = placeOfTable(name, language);
    auto found = tables_.find(place);
    if (found == tables_.end()) {
        const QString path = inContents(QStringLiteral("Resources/") + place);
        CFRef<CFDictionaryRef> table;
        if (staysInside(name) && QFileInfo::exists(path)) {
            CFRef<CFStringRef> error;
            const CFRef<CFDataRef> data = readFile(path, &error);
            table = data ? readStringsTable(data.get(), &error) : nullptr;
            if (!table) {
                told_.insert(place);
                printLine(stderr, (path + QStringLiteral(": ") + textOf(error.get())).toStdString());
            }
        }
        found = tables_.emplace(place, std::move(table));
    }
    return found->get();
}

void CFBundleObject::tellOfLack(const QString& name, const QString& language) {
    const QString place = placeOfTable(name, language);
    if (!told_.contains(place)) {
        told_.insert(place);
        const QString path = inContents(QStringLiteral("Resources/") + place);
        printLine(stderr, (path + QStringLiteral(": ") + messageOf("texts are missing")).toStdString());
    }
}

void setLastBundleError(const QString& reason) {
    lastError() = reason.isEmpty() ? nullptr : makeString(reason);
}

CFBundleRef CFBundleCreate(CFAllocatorRef, CFURLRef url) {
    const QString path = filePathOf(url);
    if (path.isEmpty()) {
        setLastBundleError(messageOf("the bundle's address is not that of a folder"));
        return nullptr;
    }
    const QString root = QFileInfo(path).canonicalFilePath();
    for (CFBundleObject* bundle : livingBundles()) {
        if (bundle->root == root) {
            setLastBundleError({});
            bundle->retain();
            return bundle;
        }
    }
    const QString infoPath = (root.isEmpty() ? path : root) + QStringLiteral("/Contents/Info.plist");
    CFRef<CFStringRef> error;
    CFRef<CFDictionaryRef> info = readInfo(infoPath, &error);
    setLastBundleError(info ? QString() : infoPath + QStringLiteral(": ") + textOf(error.get()));
    return info ? new CFBundleObject(root, std::move(info)) : nullptr;
}

CFStringRef CFBundleGetLastError() {
    return lastError().get();
}

CFBundleRef CFBundleGetBundleWithIdentifier(CFStringRef identifier) {
    const QString wanted = textOf(identifier);
    for (CFBundleObject* bundle : livingBundles()) {
        if (!wanted.isEmpty() && infoText(bundle, CFSTR("CFBundleIdentifier")) == wanted) {
            return bundle;
        }
    }
    return nullptr;
}

Boolean CFBundleLoadExecutable(CFBundleRef bundle) {
    CFBundleObject* object = checked(bundle);
    if (!object) {
        return false;
    }
    QString error;
    if (!object->code) {
        const QString name = infoText(object, CFSTR("CFBundleExecutable"));
        if (name.isEmpty() || name.contains(u'/') || !staysInside(name)) {
            error = object->inContents(QStringLiteral("Info.plist: ")) +
                    messageOf("CFBundleExecutable does not name the executable");
        } else {
            const QString path = object->inContents(QStringLiteral("Linux/") + name);
            object->code = dlopen(path.toUtf8().constData(), RTLD_NOW | RTLD_LOCAL);
            // The loader's words begin with the path, unless it is a library of the executable that it misses.
            error = object->code ? QString() : QString::fromUtf8(dlerror());
            if (!error.isEmpty() && !error.startsWith(path)) {
                error.prepend(path + QStringLiteral(": "));
            }
        }
    }
    setLastBundleError(error);
    return object->code != nullptr;
}

void* CFBundleGetFunctionPointerForName(CFBundleRef bundle, CFStringRef name) {
    const QByteArray symbol = textOf(name).toUtf8();
    return !symbol.isEmpty() && CFBundleLoadExecutable(bundle) ? dlsym(bundle->code, symbol.constData()) : nullptr;
}

CFURLRef CFBundleCopyBundleURL(CFBundleRef bundle) {
    const CFBundleObject* object = checked(bundle);
    return object ? makeFileURL(object->root, true).leak() : nullptr;
}

CFURLRef CFBundleCopyBuiltInPlugInsURL(CFBundleRef bundle) {
    return checked(bundle) ? urlInContents(bundle, QStringLiteral("PlugIns")).leak() : nullptr;
}

CFURLRef CFBundleCopyResourceURL(CFBundleRef bundle, CFStringRef name, CFStringRef type, CFStringRef subfolder) {
    const CFBundleObject* object = checked(bundle);
    QString file = textOf(name);
    if (!object || file.isEmpty()) {
        return nullptr;
    }
    if (const QString suffix = textOf(type); !suffix.isEmpty()) {
        file += suffix.startsWith(u'.') ? suffix : u'.' + suffix;
    }
    if (const QString folder = textOf(subfolder); !folder.isEmpty()) {
        file.prepend(folder + u'/');
    }
    if (!staysInside(file)) {
        return nullptr;
    }
    QStringList places = {QString()};
    for (const QString& language : object->languages) {
        places << language + QStringLiteral(".lproj/");
    }
    for (const QString& place : places) {
        const QFileInfo found(object->inContents(QStringLiteral("Resources/") + place + file));
        if (found.exists()) {
            return makeFileURL(found.filePath(), found.isDir()).leak();
        }
    }
    return nullptr;
}

CFStringRef CFBundleCopyLocalizedString(CFBundleRef bundle, CFStringRef key, CFStringRef value, CFStringRef table) {
    if (CFBundleObject* object = checked(bundle)) {
        const QString name = table ? textOf(table) : QStringLiteral("Localizable");
        QString lacking;  // the user's language, when another one has the text
        for (const QString& language : object->languages) {
            if (const auto text = static_cast<CFStringRef>(CFDictionaryGetValue(object->table(name, language), key))) {
                if (!lacking.isEmpty() && !lacking.startsWith(language)) {
                    object->tellOfLack(name, lacking);
                }
                const QString localized = withDigitsOfLocale(text->text);
                return localized == text->text ? CFRef<CFStringRef>::retain(text).leak() : makeString(localized).leak();
            }
            if (lacking.isEmpty() || lacking.startsWith(language)) {
                lacking = language;
            }
        }
    }
    return CFStringCreateCopy(nullptr, textOf(value).isEmpty() ? key : value);
}

CFTypeRef CFBundleGetValueForInfoDictionaryKey(CFBundleRef bundle, CFStringRef key) {
    const CFTypeRef localized = CFDictionaryGetValue(CFBundleGetLocalInfoDictionary(bundle), key);
    return localized || !checked(bundle) ? localized : CFDictionaryGetValue(bundle->info.get(), key);
}

CFDictionaryRef CFBundleGetLocalInfoDictionary(CFBundleRef bundle) {
    if (CFBundleObject* object = checked(bundle)) {
        for (const QString& language : object->languages) {
            if (const CFDictionaryRef table = object->table(QStringLiteral("InfoPlist"), language)) {
                return table;
            }
        }
    }
    return nullptr;
}
