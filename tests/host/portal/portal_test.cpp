// The desktop's print requests, called as its portal calls them: settings from the dialog, and a document printed by
// them.
#include "driver/proof/proof.h"
#include "tests/driver/proof/proof_words.h"
#include "tests/support/places.h"
#include "tests/support/print_server.h"
#include "tests/support/private_session.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusReply>
#include <QDBusUnixFileDescriptor>

#include <fstream>
#include <regex>
#include <sstream>

namespace fs = std::filesystem;

namespace {

const std::string kTenPages = sourcePath("tests/data/ten-pages.pdf");
const QString kService = QStringLiteral("org.freedesktop.impl.portal.desktop.tavro");

class Portal : public testing::Test {
protected:
    Portal() : server(session.home() / "server") {
        server.addQueue("tavro", sourcePath("resources/ppd/Tavro-ZR420.ppd"));
        server.admin("lpadmin -d tavro");
        setenv("CUPS_SERVER", server.address().c_str(), 1);
        EXPECT_TRUE(hasBus);
    }
    ~Portal() override {
        if (service > 0) {
            kill(service, SIGTERM);
            EXPECT_EQ(left(), 0);
        }
        QDBusConnection::disconnectFromBus(QStringLiteral("caller"));
    }

    /// Starts the service with dialogs that are driven by a script; without one they stay open.
    void start(const std::string& script, std::vector<std::string> more = {}) {
        if (!script.empty()) {
            std::ofstream(session.home() / "script") << script;
            more.insert(more.end(), {"--script", session.home() / "script"});
        }
        std::string program = stagePath("lib/tavro-portal");
        std::vector<char*> words{program.data()};
        for (std::string& word : more) {
            words.push_back(word.data());
        }
        words.push_back(nullptr);
        ASSERT_EQ(posix_spawn(&service, program.c_str(), nullptr, nullptr, words.data(), environ), 0);
        ASSERT_TRUE(eventually([&] {
            return QDBusReply<bool>(caller.call(QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
                                                                               QStringLiteral("/"),
                                                                               QStringLiteral("org.freedesktop.DBus"),
                                                                               QStringLiteral("NameHasOwner"))
                                                << kService))
                .value();
        }));
    }
    /// Waits for its end.
    int left() {
        int status = 0;
        waitpid(std::exchange(service, -1), &status, 0);
        return status;
    }

    static QDBusMessage request(const char* method, const QString& handle, const QString& program,
                                const QString& title) {
        return QDBusMessage::createMethodCall(kService, QStringLiteral("/org/freedesktop/portal/desktop"),
                                              QStringLiteral("org.freedesktop.impl.portal.Print"),
                                              QString::fromLatin1(method))
               << QVariant::fromValue(QDBusObjectPath(handle)) << program << QString() << title;
    }
    static QDBusMessage preparing(const QVariantMap& settings = {}, const QVariantMap& pageSetup = {},
                                  const QString& handle = QStringLiteral("/request/1"),
                                  const QVariantMap& options = {}) {
        return request("PreparePrint", handle, QStringLiteral("editor"), QStringLiteral("Letter"))
               << settings << pageSetup << options;
    }
    static QDBusMessage printing(quint32 token, int file, const QString& program = QStringLiteral("editor")) {
        return request("Print", QStringLiteral("/request/2"), program, QStringLiteral("<b>My</b> ../Report"))
               << QVariant::fromValue(QDBusUnixFileDescriptor(file)) << QVariantMap{{QStringLiteral("token"), token}};
    }

    struct Answer {
        uint response = 99;
        QVariantMap settings;
        QVariantMap pageSetup;
        quint32 token = 0;

        std::string operator[](const char* key) const {
            return settings.value(QString::fromLatin1(key), QStringLiteral("none")).toString().toStdString();
        }
    };
    static Answer answerOf(const QDBusMessage& reply) {
        Answer answer;
        EXPECT_EQ(reply.type(), QDBusMessage::ReplyMessage) << reply.errorMessage().toStdString();
        if (reply.arguments().size() == 2) {
            const auto results = qdbus_cast<QVariantMap>(reply.arguments().at(1));
            answer.response = reply.arguments().at(0).toUInt();
            answer.settings = qdbus_cast<QVariantMap>(results.value(QStringLiteral("settings")));
            answer.pageSetup = qdbus_cast<QVariantMap>(results.value(QStringLiteral("page-setup")));
            answer.token = results.value(QStringLiteral("token")).toUInt();
        }
        return answer;
    }
    Answer ask(const QDBusMessage& message) { return answerOf(caller.call(message, QDBus::Block, 50000)); }

    Answer print(quint32 token, int flags = O_RDONLY, const QString& program = QStringLiteral("editor")) {
        const int file = open(kTenPages.c_str(), flags | O_CLOEXEC);
        lseek(file, 100, SEEK_SET);  // where the caller has stopped writing
        Answer answer = ask(printing(token, file, program));
        close(file);
        return answer;
    }
    Proof printed(const std::string& job) const {
        EXPECT_TRUE(server.hasCompleted(job)) << server.log();
        std::string reason;
        const auto proof = readProof(server.printedBy("tavro"), &reason);
        EXPECT_TRUE(proof) << reason;
        return proof.value_or(Proof{});
    }

    /// The folders of requests and of what was prepared.
    std::ptrdiff_t folders() const {
        return std::ranges::count_if(fs::directory_iterator(session.home() / "XDG_RUNTIME_DIR"), [](const auto& entry) {
            return entry.path().filename().string().starts_with(".tavro-");
        });
    }

    int argumentCount = 1;
    char name[5] = "test";
    char* arguments[2] = {name, nullptr};
    QCoreApplication application{argumentCount, arguments};
    PrivateSession session;
    bool hasBus = session.start();
    PrintServer server;
    pid_t service = -1;
    QDBusConnection caller = connect();

private:
    QDBusConnection connect() {
        return QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"),
                                             QStringLiteral("caller"));
    }
};

}  // namespace

TEST_F(Portal, PrintsOnceWhatWasPrepared) {
    start(
        "expect Host:1 text \"Letter\"\nexpect Host:30 value 2\nexpect Host:31 text \"1-3,8\"\nexpect Host:20 value 2\n"
        "expect Host:40 text \"A4 (210 x 297 mm)\"\nexpect Tshl:113 text \"2-Sided, Flip on Long Edge\"\n"
        "expect Host:41 text \"Reverse Landscape\"\nset Host:41 1\nchoose Host:46 \"2\"\nok\n");
    const Answer prepared = ask(preparing({{QStringLiteral("n-copies"), QStringLiteral("2")},
                                           {QStringLiteral("duplex"), QStringLiteral("horizontal")},
                                           {QStringLiteral("print-pages"), QStringLiteral("ranges")},
                                           {QStringLiteral("page-ranges"), QStringLiteral("0-2,7")},
                                           {QStringLiteral("output-uri"), QStringLiteral("file:///etc/passwd")},
                                           {QStringLiteral("own"), QStringLiteral("a\tb")}},
                                          {{QStringLiteral("Width"), 209.2},  // A4 as some programs write it
                                           {QStringLiteral("Height"), 297.8},
                                           {QStringLiteral("Orientation"), QStringLiteral("reverse-landscape")}}));
    ASSERT_EQ(prepared.response, 0U);
    // The caller makes each page once, as large as the paper; all else is done with the job.
    EXPECT_EQ(prepared["n-copies"] + prepared["number-up"] + prepared["print-pages"] + prepared["page-ranges"],
              "11allnone");
    EXPECT_EQ(prepared["printer"] + prepared["duplex"] + prepared["output-uri"] + prepared["own"],
              "tavrohorizontalnonea b");
    EXPECT_EQ(prepared.pageSetup.value(QStringLiteral("PPDName")), QStringLiteral("A4"));
    EXPECT_NEAR(prepared.pageSetup.value(QStringLiteral("Height")).toDouble(), 297, 0.1);
    EXPECT_GT(prepared.pageSetup.value(QStringLiteral("MarginTop")).toDouble(), 1);
    EXPECT_EQ(prepared.pageSetup.value(QStringLiteral("Orientation")), QStringLiteral("portrait"));
    for (const auto& entry : fs::recursive_directory_iterator(session.home() / "XDG_RUNTIME_DIR")) {
        EXPECT_EQ(entry.status().permissions() & fs::perms(0077), fs::perms::none) << entry.path();
    }

    // Others, and descriptors that the caller could not read itself, get nothing; the token is still good then.
    EXPECT_EQ(print(prepared.token, O_WRONLY).response, 2U);
    EXPECT_EQ(print(prepared.token, O_PATH).response, 2U);
    EXPECT_EQ(print(prepared.token, O_RDONLY, QStringLiteral("other")).response, 2U)
        << "the script expects other settings";

    ASSERT_EQ(print(prepared.token).response, 0U);
    const Proof proof = printed("tavro-1");
    EXPECT_EQ(proof.copies, 2);
    EXPECT_EQ(wordsOf(proof), "595x842[Page 2 Page 1|Page 8 Page 3]") << "once two pages a side, of those asked for";
    EXPECT_NE(server.log().find("<b>My</b> ../Report"), std::string::npos);
    EXPECT_EQ(print(prepared.token).response, 2U) << "used twice";
    EXPECT_EQ(folders(), 0);
}

TEST_F(Portal, OffersTheOtherQueuesWhereTheDefaultOneIsOfAnotherMaker) {
    std::ostringstream ppd;
    ppd << std::ifstream(sourcePath("resources/ppd/Tavro-ZR410.ppd")).rdbuf();
    std::ofstream(session.home() / "other.ppd")
        << std::regex_replace(ppd.str(), std::regex("Manufacturer: \"Tavro\""), "Manufacturer: \"Somebody\"");
    server.addQueue("other", session.home() / "other.ppd");
    server.addQueue("second", sourcePath("resources/ppd/Tavro-ZR420.ppd"));
    server.admin("lpadmin -d other");
    // The other maker's prints, too, with what every printer has.
    start("expect Host:10 text \"other\"\nexpect Host:10 items 3\nset Host:20 3\nok\n");
    const Answer general = ask(preparing());
    ASSERT_EQ(general.response, 0U);
    EXPECT_EQ(general["printer"], "other");
    EXPECT_EQ(print(general.token).response, 0U);
    EXPECT_TRUE(server.hasCompleted("other-1")) << server.log();

    std::ofstream(session.home() / "script")
        << "expect Host:10 text \"other\"\nchoose Host:10 \"second\"\npanel \"Paper and Output\"\n"
           "choose Tshl:113 \"2-Sided, Flip on Long Edge\"\nok\n";
    const Answer chosen = ask(preparing({{QStringLiteral("printer"), QStringLiteral("gone")}}));
    ASSERT_EQ(chosen.response, 0U);
    EXPECT_EQ(chosen["printer"] + chosen["duplex"], "secondhorizontal");
    EXPECT_EQ(print(chosen.token).response, 0U);
    EXPECT_TRUE(server.hasCompleted("second-2")) << server.log();

    // Where the program has printed before.
    std::ofstream(session.home() / "script") << "expect Host:10 text \"tavro\"\nok\n";
    EXPECT_EQ(ask(preparing({{QStringLiteral("printer"), QStringLiteral("tavro")}}))["printer"], "tavro");
    EXPECT_EQ(folders(), 1);
}

TEST_F(Portal, AsksWhereNothingWasPreparedAndForgetsWhatIsTooOld) {
    start("expect Host:2 text \"10 pages\"\nset Host:20 2\nok\n", {"--keep", "0", "--idle", "0"});
    EXPECT_EQ(print(0).response, 0U);
    EXPECT_EQ(printed("tavro-1").copies, 2);
    EXPECT_EQ(left(), 0) << "nobody asks any more";
    start("type Host:31 \"2,12\"\nok\n", {"--keep", "0"});
    const Answer prepared = ask(preparing());
    ASSERT_EQ(prepared.response, 0U);
    EXPECT_EQ(print(prepared.token).response, 2U) << "the dialog, which does not take pages that there are not";
    EXPECT_EQ(folders(), 0);
}

TEST_F(Portal, LeavesTheCurrentPageToTheProgramThatKnowsIt) {
    start("ok\n");
    const Answer prepared = ask(preparing({{QStringLiteral("print-pages"), QStringLiteral("current")}}, {},
                                          QStringLiteral("/request/1"), {{QStringLiteral("has_current_page"), true}}));
    EXPECT_EQ(prepared["print-pages"], "current");
    ASSERT_EQ(print(prepared.token).response, 0U);
    EXPECT_EQ(printed("tavro-1").sheets.size(), 10U) << "all of what the program has made";
}

TEST_F(Portal, TellsThatTheDocumentHasNoSuchPages) {
    start("type Host:31 \"12\"\nok\n");
    EXPECT_EQ(print(ask(preparing()).token).response, 2U);
    EXPECT_EQ(folders(), 0);
}

TEST_F(Portal, EndsDialogsThatNobodyWaitsForAnyMore) {
    start({});
    const QDBusPendingCall first = caller.asyncCall(preparing());
    ASSERT_TRUE(eventually([&] { return folders() == 1; }));
    auto other =
        QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("other"));
    other.asyncCall(preparing({}, {}, QStringLiteral("/request/3")));
    ASSERT_TRUE(eventually([&] { return folders() == 2; }));
    EXPECT_EQ(ask(preparing()).response, 2U) << "a path that is taken";
    QDBusConnection::disconnectFromBus(QStringLiteral("other"));
    other = caller;
    ASSERT_TRUE(eventually([&] { return folders() == 1; })) << "the caller has gone";
    EXPECT_FALSE(first.isFinished());
    caller.call(QDBusMessage::createMethodCall(kService, QStringLiteral("/request/1"),
                                               QStringLiteral("org.freedesktop.impl.portal.Request"),
                                               QStringLiteral("Close")));
    QDBusPendingCall closed = first;
    closed.waitForFinished();
    EXPECT_EQ(answerOf(closed.reply()).response, 2U);
    EXPECT_EQ(folders(), 0);
}
