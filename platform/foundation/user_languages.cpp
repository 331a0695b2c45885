#include "platform/foundation/user_languages.h"

#include "platform/foundation/bundle.h"

#include <QDir>
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
    const auto found = std::ranges::find_if(bundle->languages, [bundle](const QString& language) {
        return QDir(bundle->inContents(QStringLiteral("Resources/%1.lproj").arg(language))).exists();
    });
    return found == bundle->languages.end() ? QStringLiteral("en") : *found;
}
