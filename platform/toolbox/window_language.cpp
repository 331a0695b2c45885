// The language of the windows.

#include "platform/foundation/user_languages.h"
#include "platform/toolbox/Windows.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

OSStatus SetWindowLanguage(CFBundleRef bundle) {
    if (bundle == nullptr || qApp == nullptr) {
        return paramErr;
    }
    const QString language = languageOfTexts(bundle);
    QApplication::setLayoutDirection(QLocale(language).textDirection());
    static QTranslator own;  // installed once, whatever it has
    if (language != QLatin1String("en") &&
        own.load(QStringLiteral("qtbase_") + language, QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QApplication::installTranslator(&own);
    }
    return noErr;
}
