// The language of the windows.

#include "platform/foundation/bundle.h"
#include "platform/toolbox/Windows.h"

#include <QApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>
#include <algorithm>

OSStatus SetWindowLanguage(CFBundleRef bundle) {
    if (bundle == nullptr || qApp == nullptr) {
        return paramErr;
    }
    const auto found = std::ranges::find_if(bundle->languages, [bundle](const QString& language) {
        return QDir(bundle->inContents(QStringLiteral("Resources/%1.lproj").arg(language))).exists();
    });
    const QString language = found == bundle->languages.end() ? QStringLiteral("en") : *found;
    QApplication::setLayoutDirection(QLocale(language).textDirection());
    static QTranslator own;  // installed once, whatever it has
    if (language != QLatin1String("en") &&
        own.load(QStringLiteral("qtbase_") + language, QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QApplication::installTranslator(&own);
    }
    return noErr;
}
