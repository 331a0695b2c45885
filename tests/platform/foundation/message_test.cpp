// Messages: in the user's language, and on their way from one program to another.
#include "platform/foundation/message.h"

#include "platform/foundation/message_tables.h"
#include "tests/platform/files/temporary_folder.h"

#include <gtest/gtest.h>

#include <QLocale>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace {

class Messages : public testing::Test {
protected:
    ~Messages() override { setMessageWriter(nullptr); }

    void add(const std::string& language, const std::string& rows) const {
        const std::filesystem::path place = folder.path() / (language + ".lproj");
        std::filesystem::create_directories(place);
        std::ofstream(place / "Messages.strings") << rows;
    }

    /// The message by these tables in German, and what standard error has of them.
    std::string shown(const char* english, std::initializer_list<MessageValue> values = {}) {
        setenv("LANG", "de_DE.UTF-8", 1);  // Qt reads it once
        setenv("LANGUAGE", "de_AT:fr", 1);
        showMessagesOf(folder.path());
        testing::internal::CaptureStderr();
        const std::string text = messageText(english, values);
        EXPECT_EQ(messageText(english, values), text);
        errors = testing::internal::GetCapturedStderr();
        return text;
    }

    TemporaryFolder folder;
    std::string errors;
};

}  // namespace

TEST_F(Messages, AreOfTheUsersTable) {
    add("en", R"("%1 has %2" = "%1 has %2"; "gone" = "gone";)");
    add("de", R"("%1 has %2" = "%2 bei %1"; "gone" = "weg: ١٫٥";)");
    QLocale::setDefault(QLocale(QLocale::German));
    EXPECT_EQ(shown("%1 has %2", {"a%2b", 30}), "30 bei a%2b") << "a value is no text with places";
    EXPECT_EQ(shown("gone"), "weg: 1,5") << "in the digits of the locale";
    EXPECT_EQ(shown("of a library"), "of a library");
    QLocale::setDefault(QLocale::c());
    EXPECT_EQ(errors, "");
    setMessageWriter(nullptr);
    EXPECT_EQ(messageText("%1 has %2", {"x", -3}), "x has -3");
    EXPECT_EQ(messageText("%1 %2 %3", {"one"}), "one %2 %3");
}

TEST_F(Messages, AreEnglishWhereATableFails) {
    const std::string place = folder.path() / "de.lproj/Messages.strings";
    add("en", R"("here" = "here"; "gone" = "gone";)");
    add("de", R"("here" = "da";)");
    EXPECT_EQ(shown("gone"), "gone");
    EXPECT_EQ(errors, place + ": texts are missing\n");
    add("de", R"("here" = )");
    EXPECT_EQ(shown("here"), "here");
    EXPECT_TRUE(errors.starts_with(place + ": line 1, column ") && errors.ends_with("\n")) << errors;
    std::filesystem::remove(place);
    EXPECT_EQ(shown("here"), "here");
    EXPECT_EQ(errors, place + ": is missing\n");
}

TEST_F(Messages, TravelBetweenPrograms) {
    add("en", R"("cannot be kept in %1: %2" = ""; "No space left on device" = "";)");
    add("de", R"-("cannot be kept in %1: %2" = "%2 (in %1)"; "No space left on device" = "voll";)-");
    setMessageWriter(packMessage);
    const std::string packed = messageText("cannot be kept in %1: %2", {"/tmp", systemMessage(ENOSPC)});
    shown("");
    EXPECT_EQ(unpackMessages("tavro: " + packed + "!"), "tavro: voll (in /tmp)!");
    setMessageWriter(nullptr);
    EXPECT_EQ(unpackMessages(packed), "cannot be kept in /tmp: No space left on device");
    // A report that is cut off, or made by a program that a document has taken over.
    for (std::size_t length = 0; length < packed.size(); ++length) {
        unpackMessages(packed.substr(0, length));
    }
    std::string deep;
    for (int i = 0; i < 10000; ++i) {
        deep += packed.substr(0, 3);
    }
    EXPECT_LE(unpackMessages(deep).size(), deep.size());
}
