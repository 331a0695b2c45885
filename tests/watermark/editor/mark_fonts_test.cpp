// The fonts that the watermark editor offers, and what it says about those that it cannot.
#include "watermark/editor/mark_fonts.h"
#include "watermark/editor/font_menu.h"

#include "tests/platform/files/temporary_folder.h"
#include "watermark/editor/editor_texts.h"

#include <fontconfig/fontconfig.h>
#include <gtest/gtest.h>
#include <QFile>

namespace {

/// DejaVu Sans under another name, which its maker does not allow to be embedded; for this process alone.
void installRestrictedFont(const QString& path) {
    const auto face = FindFontFace("DejaVuSans");
    ASSERT_TRUE(face);
    QFile original(QString::fromStdString(face->path));
    ASSERT_TRUE(original.open(QIODevice::ReadOnly));
    QByteArray font = original.readAll();
    font.replace("DejaVu", "KeepVu");
    font.replace(QByteArray("\0D\0e\0j\0a\0V\0u", 12), QByteArray("\0K\0e\0e\0p\0V\0u", 12));
    const qsizetype entry = font.indexOf("OS/2");
    qsizetype rights = 8;
    for (qsizetype i = 0; i < 4; ++i) {
        rights += qsizetype{static_cast<unsigned char>(font[entry + 8 + i])} << (24 - 8 * i);
    }
    font[rights] = 0;
    font[rights + 1] = 2;
    QFile copy(path);
    ASSERT_TRUE(copy.open(QIODevice::WriteOnly));
    copy.write(font);
    copy.close();
    ASSERT_TRUE(FcConfigAppFontAddFile(nullptr, reinterpret_cast<const FcChar8*>(qUtf8Printable(path))));
}

TEST(MarkFonts, AreAllThereWithWhatSpeaksAgainstThem) {
    const TemporaryFolder folder;
    installRestrictedFont(QString::fromStdString(folder / "restricted.ttf"));
    MarkFonts fonts;
    EXPECT_TRUE(fonts.families().contains(QStringLiteral("KeepVu Sans")));
    EXPECT_EQ(fonts.refusal(QStringLiteral("KeepVu Sans")), FontRefusal::embeddingRestricted);
    EXPECT_EQ(fonts.refusal(QStringLiteral("DejaVu Sans")), FontRefusal::none);
    EXPECT_EQ(fonts.refusal(QStringLiteral("C059")), FontRefusal::postScriptOutlines);
    EXPECT_EQ(fonts.refusal(QStringLiteral("No Such Font")), FontRefusal::notAFont);
    EXPECT_EQ(fonts.firstStyle(QStringLiteral("Liberation Serif")), QStringLiteral("Regular"));
    EXPECT_EQ(fonts.postScriptName(QStringLiteral("DejaVu Sans"), QStringLiteral("Bold")), "DejaVuSans-Bold");
    // What is chosen is tried as it is printed.
    EXPECT_EQ(fonts.named("KeepVuSans").refusal, FontRefusal::embeddingRestricted);
    EXPECT_EQ(fonts.named("C059-Roman").refusal, FontRefusal::postScriptOutlines);
    FcConfigAppFontClear(nullptr);
}

TEST(FontMenu, ShowsWhatCannotBeChosenAndWhy) {
    std::vector<QString> asked;
    FontMenu menu(
        [&asked](const QString& name) {
            asked.push_back(name);
            return name == QStringLiteral("Kept") ? FontRefusal::embeddingRestricted : FontRefusal::none;
        },
        nullptr);
    menu.setNames({QStringLiteral("Free"), QStringLiteral("Kept")});
    const QModelIndex free = menu.index(0);
    const QModelIndex kept = menu.index(1);
    EXPECT_EQ(menu.rowCount({}), 2);
    EXPECT_EQ(kept.data().toString(), QStringLiteral("Kept"));
    EXPECT_TRUE(asked.empty()) << "a name is no reason to open a file";
    EXPECT_TRUE(free.flags() & Qt::ItemIsEnabled);
    EXPECT_FALSE(kept.flags() & (Qt::ItemIsEnabled | Qt::ItemIsSelectable));
    EXPECT_TRUE(free.data(Qt::ToolTipRole).isNull());
    const QString reason = kept.data(Qt::ToolTipRole).toString();
    EXPECT_EQ(reason, EditorText("Font Restricted").replace(QStringLiteral("%2"), QStringLiteral("Kept")));
    EXPECT_EQ(kept.data(Qt::AccessibleDescriptionRole).toString(), reason);
}

}  // namespace
