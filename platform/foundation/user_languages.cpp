#include "platform/foundation/user_languages.h"

#include "platform/foundation/bundle.h"

#include <QLocale>
#include <algorithm>

QStringList userLanguages() {
    QStringList names;
    for (QString language : QLocale::system().uiLanguages()) {
        while (!language.isEmpty()) {
            names << language << QString(language).replace(u'-', u'_');
            language.truncate(std::max<qsizetype>(language.lastIndexOf(u'-'), 0));
        }
    }
    names << QStringLiteral("en");
    names.removeDuplicates();
    return names;
}

QString languageOfTexts(CFBundleRef bundle) {
    return bundle->languages.first();
}
