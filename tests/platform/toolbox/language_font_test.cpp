// The letters of a language, in the font that is made for it.

#include "platform/toolbox/language_font.h"

#include "platform/fonts/font_faces.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFont>
#include <QGlyphRun>
#include <QRawFont>
#include <QTextLayout>
#include <set>

namespace {

/// The families that a text is drawn in.
std::set<std::string> familiesOf(const QString& text) {
    QTextLayout layout(text, QApplication::font());
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    std::set<std::string> families;
    for (const QGlyphRun& run : layout.glyphRuns()) {
        families.insert(run.rawFont().familyName().toStdString());
    }
    return families;
}

TEST(LanguageFont, HasTheMarksOfASentenceAsWell) {
    const QFont before = QApplication::font();
    const auto families = FamiliesForText(before.family().toStdString(), "ja_JP");
    ASSERT_EQ(families.size(), 2U);
    useFontOf("ja_JP");
    EXPECT_EQ(familiesOf("\uFF08\u7D19\uFF09"), std::set{families[1]});
    EXPECT_EQ(familiesOf("\uFF08\u3042\uFF09\u30A2\u30FB"), std::set{families[1]});
    EXPECT_EQ(familiesOf("A4, 80 g/m2"), std::set{families[0]});
    QFont::removeSubstitutions(QString::fromStdString(families[0]));
    QApplication::setFont(before);
    useFontOf("");
    EXPECT_EQ(QApplication::font(), before);
}

TEST(LanguageFont, IsAskedForWhereTheFamilyLacksItsLetters) {
    const auto latin = FamiliesForText("DejaVu Sans", "fr");
    EXPECT_EQ(latin, std::vector<std::string>{"DejaVu Sans"});
    const auto korean = FamiliesForText("DejaVu Sans", "ko_KR");
    ASSERT_EQ(korean.size(), 2U);
    EXPECT_EQ(korean[0], "DejaVu Sans");
    EXPECT_NE(korean[1], FamiliesForText("DejaVu Sans", "ja").at(1));
    EXPECT_EQ(FamiliesForText("No Such Family", "fr"), FamiliesForText("Sans Serif", "fr"));
    EXPECT_EQ(FamiliesForText("DejaVu Sans", "no language").size(), 1U);
}

}  // namespace
