#include "platform/toolbox/language_font.h"

#include "platform/fonts/font_faces.h"
#include "platform/foundation/user_languages.h"

#include <QApplication>
#include <QFont>
#include <QLocale>
#include <algorithm>

namespace {

constexpr char16_t kLastLatin = 0x24F;

}  // namespace

std::string languageOfOtherLetters() {
    const QLocale language(userLanguages().first());
    const QString name = language.nativeLanguageName();
    const bool isOther = std::ranges::any_of(name, [](QChar letter) { return letter.unicode() > kLastLatin; });
    return isOther ? language.name().toStdString() : std::string();
}

void useFontOf(const std::string& language) {
    if (language.empty()) {
        return;
    }
    QFont font = QApplication::font();
    const auto families = FamiliesForText(font.family().toStdString(), language);
    if (families.empty()) {
        return;
    }
    const QString first = QString::fromStdString(families.front());
    if (first.compare(font.family(), Qt::CaseInsensitive) != 0) {
        font.setFamilies({first});  // for a name that no font has, Qt would look through all of them for each script
        QApplication::setFont(font);
    }
    for (auto behind = families.begin() + 1; behind != families.end(); ++behind) {
        QFont::insertSubstitution(first, QString::fromStdString(*behind));
    }
}
