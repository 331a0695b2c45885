// The resources against the code and the windows that ask for them: nothing missing, nothing that nobody asks for.
#include "model/stock/stock_icon.h"
#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/CFURL.h"
#include "tests/resources/source_scan.h"
#include "tests/support/places.h"

#include <gtest/gtest.h>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QImage>
#include <QRegularExpression>
#include <algorithm>
#include <cstring>

namespace {

/// A bundle and the sources that are served by it.
struct Served {
    const char* bundle;     // path in the stage
    const char* nibFolder;  // path in the sources
    QStringList sources;
    bool hasDeviceProfile = false;
    QStringList messageSources = {};  // whose messages are in its table

    QString resources() const { return QString::fromStdString(stagePath(std::string(bundle) + "/Contents/Resources")); }
    /// As Designer has them: what is served is compiled.
    QString nibs() const { return QString::fromStdString(sourcePath(nibFolder)); }
    QStringList languages() const {
        return QDir(resources()).entryList({QStringLiteral("*.lproj")}, QDir::Dirs, QDir::Name);
    }
    StringsTable table(const QString& language, const QString& name) const {
        return ReadStringsTable(QStringLiteral("%1/%2/%3.strings").arg(resources(), language, name));
    }
};

const Served kPlugIn{"plugins/TavroFeatures.plugin",
                     "resources/nibs",
                     {QStringLiteral("model"), QStringLiteral("core"), QStringLiteral("ui"), QStringLiteral("panels"),
                      QStringLiteral("jobtypes"), QStringLiteral("watermark")},
                     true};
const Served kEditor{"plugins/TavroFeatures.plugin/Contents/PlugIns/WatermarkEditor.bundle",
                     "resources/watermark_editor",
                     {QStringLiteral("watermark/editor")}};
const Served kHost{"TavroPrint.bundle",
                   "resources/host/nibs",
                   {QStringLiteral("host")},
                   false,
                   {QStringLiteral("host"), QStringLiteral("driver"), QStringLiteral("platform")}};

std::string Listed(const QSet<QString>& names) {
    QStringList sorted = names.values();
    sorted.sort();
    return sorted.join(QLatin1String(", ")).toStdString();
}

void PrintTo(const Served& served, std::ostream* out) {
    *out << served.bundle;
}

/// The files behind names in which * stands for a color of paper.
QSet<QString> InEachColor(const QSet<QString>& names) {
    QSet<QString> files;
    for (const QString& name : names) {
        for (const char* color : {"White", "Blue", "Yellow", "Green", "Pink", "Clear", "Buff", "Goldenrod", "Red",
                                  "Ivory", "Gray", "Orange"}) {
            files.insert(QString(name).replace(QLatin1Char('*'), QLatin1String(color)));
        }
    }
    return files;
}

/// What the system says of its errors.
QSet<QString> SystemMessages() {
    QSet<QString> messages;
    for (int error = 1; error < 200; ++error) {
        const char* const text = strerrordesc_np(error);
        messages.insert(text == nullptr ? QString() : QString::fromUtf8(text));
    }
    return messages;
}

class Resources : public testing::TestWithParam<Served> {};
INSTANTIATE_TEST_SUITE_P(Bundles, Resources, testing::Values(kPlugIn, kHost, kEditor), [](const auto& served) {
    return served.index == 0 ? "PlugIn" : served.index == 1 ? "Host" : "WatermarkEditor";
});

TEST_P(Resources, TextsAreThoseAskedFor) {
    // A key may reach its look-up by way of a constant or a function, so a key is in use when a source names it at all.
    QSet<QString> named = LiteralsInSources(GetParam().sources);
    KeysByTable asked = TextKeysInSources(GetParam().sources);
    if (!GetParam().messageSources.isEmpty()) {
        asked[QStringLiteral("Messages")] = MessagesInSources(GetParam().messageSources);
        named += LiteralsInSources(GetParam().messageSources) + SystemMessages();
    }
    asked[QStringLiteral("Localizable")] += GetParam().hasDeviceProfile ? InDeviceProfile("Name") : QSet<QString>();
    for (const NibWindow& window : NibWindowsBelow(GetParam().nibs())) {
        asked[window.nib] += window.texts;
    }
    ASSERT_FALSE(asked.isEmpty());
    ASSERT_TRUE(GetParam().languages().contains(QLatin1String("en.lproj")));

    for (const QString& language : GetParam().languages()) {
        const QDir folder(GetParam().resources() + QLatin1Char('/') + language);
        QSet<QString> tables;
        for (const QFileInfo& file : folder.entryInfoList({QStringLiteral("*.strings")}, QDir::Files)) {
            tables.insert(file.completeBaseName());
        }
        tables.remove(QStringLiteral("InfoPlist"));
        for (auto table = asked.cbegin(); table != asked.cend(); ++table) {
            const StringsTable rows = GetParam().table(language, table.key());
            const QSet<QString> present(rows.texts.keyBegin(), rows.texts.keyEnd());
            const std::string where = (language + QLatin1Char('/') + table.key()).toStdString();
            EXPECT_EQ(Listed(table.value() - present), "") << "missing in " << where;
            EXPECT_EQ(Listed(present - table.value() - named), "") << "nobody asks for these of " << where;
            EXPECT_TRUE(rows.duplicates.isEmpty()) << where << ": twice: " << rows.duplicates.join(", ").toStdString();
            tables.remove(table.key());
        }
        EXPECT_EQ(Listed(tables), "") << "tables that nobody asks for in " << language.toStdString();
    }
}

/// The lines of a file beside this one that are no comments.
QSet<QString> LinesOf(const char* name) {
    QFile file(QString::fromStdString(sourcePath(std::string("tests/resources/") + name)));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    lines.removeIf([](const QString& line) { return line.startsWith(QLatin1Char('#')); });
    return {lines.begin(), lines.end()};
}

// A sentence that nobody can translate stands in the code, and not in a table.
TEST(HostResources, SentencesAreKeysOfTables) {
    QSet<QString> keys = LinesOf("not_for_people.txt");
    const QDir english(kHost.resources() + QStringLiteral("/en.lproj"));
    for (const QFileInfo& file : english.entryInfoList({QStringLiteral("*.strings")}, QDir::Files)) {
        const QMap<QString, QString> rows = kHost.table(QStringLiteral("en.lproj"), file.completeBaseName()).texts;
        keys += QSet<QString>(rows.keyBegin(), rows.keyEnd());
    }
    // The portal's service writes to the session's log.
    EXPECT_EQ(Listed(SentencesInSources({QStringLiteral("host")}) -
                     SentencesInSources({QStringLiteral("host/portal/service")}) - keys),
              "")
        << "in host/";
    // What it tells of others' faults, but for the programs that write to the print server's log.
    const QStringList others{QStringLiteral("driver/instructions"), QStringLiteral("driver/pages"),
                             QStringLiteral("driver/job"),          QStringLiteral("driver/proof"),
                             QStringLiteral("driver/worker"),       QStringLiteral("platform/drawing"),
                             QStringLiteral("platform/files"),      QStringLiteral("platform/printing")};
    const QSet<QString> faults = FaultsInSources(others);
    EXPECT_GT(faults.size(), 20);
    EXPECT_EQ(Listed(faults - keys), "") << "in driver/ and platform/";
}

// The bundle's own reader gives each text of the user's language, with escapes resolved and nothing of the row lost.
TEST_P(Resources, TheBundleReadsItsTexts) {
    const QByteArray path = QByteArray::fromStdString(stagePath(GetParam().bundle));
    const auto pathText =
        CFRef<CFStringRef>::adopt(CFStringCreateWithCString(nullptr, path.constData(), kCFStringEncodingUTF8));
    const auto url =
        CFRef<CFURLRef>::adopt(CFURLCreateWithFileSystemPath(nullptr, pathText.get(), kCFURLPOSIXPathStyle, true));
    const auto bundle = CFRef<CFBundleRef>::adopt(CFBundleCreate(nullptr, url.get()));
    ASSERT_TRUE(bundle);

    const QDir folder(GetParam().resources() + QStringLiteral("/en.lproj"));
    for (const QFileInfo& file : folder.entryInfoList({QStringLiteral("*.strings")}, QDir::Files)) {
        const QString name = file.completeBaseName();
        const auto table = CFRef<CFStringRef>::adopt(
            CFStringCreateWithCString(nullptr, name.toUtf8().constData(), kCFStringEncodingUTF8));
        const QMap<QString, QString> rows = GetParam().table(QStringLiteral("en.lproj"), name).texts;
        EXPECT_FALSE(rows.isEmpty()) << name.toStdString();
        for (auto row = rows.cbegin(); row != rows.cend(); ++row) {
            const auto key = CFRef<CFStringRef>::adopt(
                CFStringCreateWithCString(nullptr, row.key().toUtf8().constData(), kCFStringEncodingUTF8));
            const auto text = CFRef<CFStringRef>::adopt(
                CFBundleCopyLocalizedString(bundle.get(), key.get(), CFSTR("STRING NOT FOUND"), table.get()));
            QString read(CFStringGetLength(text.get()), Qt::Uninitialized);
            CFStringGetCharacters(text.get(), CFRange{0, read.size()}, reinterpret_cast<UniChar*>(read.data()));
            EXPECT_EQ(read.toStdString(), row.value().toStdString()) << row.key().toStdString();
        }
    }
}

TEST_P(Resources, PicturesAreThoseAskedFor) {
    QSet<QString> asked = InEachColor(PicturesInSources(GetParam().sources));
    asked += GetParam().hasDeviceProfile ? InDeviceProfile("Picture") : QSet<QString>();
    QSet<QString> present;
    QDirIterator files(GetParam().resources(), {QStringLiteral("*.gif"), QStringLiteral("*.png")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString name = QDir(GetParam().resources()).relativeFilePath(files.next());
        if (!name.contains(QLatin1String("@2x."))) {
            present.insert(name);
        }
    }
    EXPECT_EQ(Listed(asked - present), "") << "missing";
    EXPECT_EQ(Listed(present - asked), "") << "nobody asks for these";

    for (const QString& name : present) {
        const QString path = GetParam().resources() + QLatin1Char('/') + name;
        const QImage plain(path);
        const QImage dense(QString(path).insert(path.lastIndexOf(QLatin1Char('.')), QStringLiteral("@2x")));
        EXPECT_FALSE(plain.isNull()) << name.toStdString();
        EXPECT_EQ(dense.size(), plain.size() * 2) << name.toStdString();
        EXPECT_TRUE(plain.hasAlphaChannel()) << name.toStdString() << " would show as a box";
    }
}

// The layers of a paper's icon lie over each other, so all have one size, and a mark hides neither what surrounds the
// paper nor the paper's color.
TEST(PlugInResources, PapersHaveTheirIcons) {
    QSet<QString> papers;
    QSet<QString> marks;
    for (const JobContext context : {JobContext::job, JobContext::insert}) {
        for (SInt32 type = kStockTypeStandard; type <= kStockTypeExtraHeavyLabels; ++type) {
            Stock stock;
            stock.setType(type);
            stock.setPunched(kStockPunched);
            const std::vector<std::string> layers = StockIconFiles(stock, context);
            papers.insert(QString::fromStdString(layers.front()));
            std::for_each(layers.begin() + 1, layers.end(),
                          [&](const std::string& layer) { marks.insert(QString::fromStdString(layer)); });
        }
    }
    const auto picture = [](const QString& name) { return QImage(kPlugIn.resources() + QLatin1Char('/') + name); };
    const QImage paper = picture(QStringLiteral("Standard-White.gif"));
    const auto isClear = [](const QImage& image, int x, int y) { return image.pixelColor(x, y).alpha() == 0; };
    for (const QString& name : papers + marks) {
        EXPECT_EQ(picture(name).size(), paper.size()) << name.toStdString();
    }
    ASSERT_FALSE(HasFailure());
    for (const QString& name : marks) {
        const QImage mark = picture(name);
        int seen = 0;
        int hidden = 0;
        for (int y = 0; y < paper.height(); ++y) {
            for (int x = 0; x < paper.width(); ++x) {
                if (!isClear(paper, x, y)) {
                    ++(isClear(mark, x, y) ? seen : hidden);
                }
            }
        }
        EXPECT_GT(seen, hidden / 2) << name.toStdString();
        EXPECT_TRUE(isClear(mark, 0, 0) && isClear(mark, paper.width() - 1, paper.height() - 1)) << name.toStdString();
    }
}

TEST_P(Resources, WindowsParse) {
    for (const NibWindow& window : NibWindowsBelow(GetParam().nibs())) {
        EXPECT_EQ(window.error.toStdString(), "") << window.nib.toStdString() << '/' << window.window.toStdString();
        QSet<QString> seen;
        for (const QString& control : window.controls) {
            EXPECT_FALSE(seen.contains(control))
                << window.nib.toStdString() << ": " << control.toStdString() << " twice";
            seen.insert(control);
        }
    }
}

// The controls that the panels and dialogs look for, by nib and window.
TEST(PlugInResources, WindowsHaveTheirControls) {
    struct Expected {
        const char* nib;
        const char* window;
        const char* signature;
        QList<int> numbers;
    };
    const Expected table[] = {
        {"PDE_Shell", "Window", "Tshl", {10, 15, 16, 17, 18, 1966, 1967}},
        {"Utilities", "CustomValue", "TPDE", {123456, 123457, 123458}},
        {"PaperOutputOffice",
         "Professional",
         "Tshl",
         {100, 102, 103, 104, 105, 106, 107, 108, 109, 110, 111, 112, 113, 115, 120, 121, 123}},
        {"PaperOutputOffice",
         "Std_Adv",
         "Tshl",
         {100, 102, 103, 104, 105, 106, 107, 108, 109, 110, 111, 112, 113, 115, 120, 121, 123}},
        {"ImageOptions", "Office", "Tshl", {900, 910, 911, 912, 913, 941, 950, 951, 963, 980,
                                            981, 982, 983, 984, 985, 986, 987, 988, 989, 990}},
        {"ColorOptions", "ColorOptions", "Tshl", {7000, 7001, 7002, 7010, 7011, 7012, 7013, 7014, 7015, 7020,
                                                  7021, 7022, 7023, 7024, 7025, 7026, 7027, 7028, 7030, 7031,
                                                  7032, 7033, 7034, 7035, 7036, 7037, 7038, 7040, 7050, 7051,
                                                  7052, 7053, 7054, 7055, 7056, 7057, 7058, 7059, 7060, 7061,
                                                  7070, 7071, 7072, 7080, 7081, 7082, 7083, 7084, 7085}},
        {"Layout", "Layout", "Tshl", {6000, 6004, 6005, 6009, 6010, 6011, 6013}},
        {"BookletCreation", "BookletFinishing", "Tshl", {1000, 1001}},
        {"FinishingDialogs", "Position", "TPDE", {1000, 1001, 1002}},
        {"FinishingDialogs", "Multiple", "TPDE", {1100, 1101, 1102, 1200, 1201, 1202, 1300, 1301, 1302}},
        {"FinishingDialogs", "Offset", "TPDE", {1000, 1001, 1002}},
        {"FinishingDialogs", "Separators", "TPDE", {1000, 1001, 1002}},
        {"FinishingDialogs", "BookletCreation", "TPDE", {1000, 1001, 1002, 1003, 1004, 1005, 1006, 1007, 1008}},
        {"JobNotes", "JobNotes", "Tshl", {2000, 2001, 2002, 2003, 2004, 2005, 2006, 2007, 2008}},
        {"JobNotes", "JobNotesPrefs", "Tjnp", {9000, 9001, 9002}},
        {"Watermark", "Window", "TVRw", {50, 100, 200, 300, 400, 500, 600, 700, 701, 702, 703}},
        {"AdvancedPanelOffice", "Advanced", "Tshl", {600, 610, 611, 621, 630, 631, 632, 634}},
        {"JobTypes", "SecurePrint", "TPDE", {20001, 20003, 20004, 20008, 20009}},
        {"JobTypes", "DelayedPrint", "TPDE", {20008, 21001}},
        {"AboutPanel", "About", "Tshl", {500, 501, 502, 503, 505, 506, 507}},
        {"AdvancedStockSelection", "Office", "TPDE", {22000, 22001, 22002, 22003, 22007, 22008, 22009, 22010,
                                                      22011, 22020, 22030, 22040, 22041, 22050, 22061, 22062,
                                                      22063, 22064, 22065, 22066, 22067, 22068}},
        {"AdvancedStockSelection",
         "StockLibraryStockSelection",
         "TPDE",
         {22000, 22001, 22002, 22003, 22007, 22008, 22009, 22010, 22011, 22020, 22030, 22040, 22041,
          22050, 22061, 22062, 22063, 22064, 22065, 22066, 22067, 22068, 22069, 22070, 22071}},
        {"StockLibrary",
         "StockLibrary",
         "TPDE",
         {23000, 23001, 23002, 23003, 23004, 23010, 23011, 23012, 23013, 23014, 23015, 23016}},
        {"CustomStockSize",
         "Custom",
         "TPDE",
         {1000, 1001, 1002, 1003, 1004, 1005, 1006, 1007, 1008, 1010, 1012, 1013, 1014}},
        {"SpecialPages", "SpecialPages", "TSPg", {1, 100, 101, 200, 201, 300, 301, 1000, 1200, 1300, 1400}},
        {"SpecialPages",
         "Office Covers",
         "TSPg",
         {2000, 2001, 2100, 2101, 2102, 2110, 2111, 2112, 2200, 2201, 2202, 2210, 2211, 2212}},
        {"SpecialPages", "Inserts", "TSPg", {3000, 3001, 3002, 3003, 3004, 3010, 3011, 3020, 3021, 3022}},
        {"SpecialPages",
         "Office Exceptions",
         "TSPg",
         {5000, 5001, 5010, 5011, 5012, 5020, 5021, 5022, 5030, 5031, 5040, 5041, 5160, 5190}},
        {"StockDescriptionSetup", "StockDescriptionSetup", "TPDE", {20200}},
        {"StockTypeSetupDialogs", "TabStockSetup", "TPDE", {1000, 1001, 1002, 1003, 1004}},
        {"StockTypeSetupDialogs", "TabStockSetupWithModulus", "TPDE", {1000, 1001, 1002, 1003, 1004, 1005}},
        {"LANFAX", "Setup", "TPDE", {1000, 1100, 1101, 1102, 1103, 1104, 1111, 1120, 1122, 1123, 1200, 1202,
                                     1204, 1206, 1208, 1209, 1227, 1211, 1212, 1213, 1214, 1216, 1217, 1219,
                                     1220, 1221, 1222, 1223, 1224, 1225, 1226, 1300, 1302, 1303}},
        {"LANFAX", "Recipient", "TPDE", {1000, 1001, 1002, 1003, 1004, 1005, 1006, 1007, 1008, 1009, 1010}},
        {"LANFAX", "Group", "TPDE", {1000, 1001}},
        {"LANFAX", "Picker", "TPDE", {1000, 1001, 1002, 1003, 1004, 1005, 1006}},
        {"LANFAX",
         "CoverSheet",
         "TPDE",
         {1000, 1001, 1002, 1003, 1004, 1005, 1006, 1010, 1011, 1012, 1020, 1030, 1031, 1032, 1033}},
        {"LANFAX", "MaxCharacters", "TPDE", {1000, 1001, 1002, 1003, 1004}},
    };
    QMap<QString, QSet<QString>> expected;
    for (const Expected& row : table) {
        for (const int number : row.numbers) {
            expected[QLatin1String(row.nib) + QLatin1Char('/') + QLatin1String(row.window)].insert(
                QStringLiteral("%1 %2").arg(QLatin1String(row.signature)).arg(number));
        }
    }
    QMap<QString, QSet<QString>> present;
    for (const NibWindow& window : NibWindowsBelow(kPlugIn.nibs())) {
        present[window.nib + QLatin1Char('/') + window.window] = {window.controls.begin(), window.controls.end()};
    }
    const QStringList known = expected.keys();
    const QStringList there = present.keys();
    EXPECT_EQ(known.join(u'\n').toStdString(), there.join(u'\n').toStdString());
    for (auto row = expected.cbegin(); row != expected.cend(); ++row) {
        EXPECT_EQ(Listed(row.value()), Listed(present.value(row.key()))) << row.key().toStdString();
    }
}

TEST(PlugInResources, InformationIsComplete) {
    const QSet<QString> asked = LiteralsInSources(kPlugIn.sources);
    for (const QString& language : kPlugIn.languages()) {
        const QMap<QString, QString> info = kPlugIn.table(language, QStringLiteral("InfoPlist")).texts;
        EXPECT_EQ(info.keys(), (QStringList{QStringLiteral("CFBundleGetInfoString"), QStringLiteral("CFBundleName"),
                                            QStringLiteral("NSHumanReadableCopyright")}));
        for (const QString& key : info.keys()) {
            EXPECT_TRUE(asked.contains(key)) << key.toStdString();
        }
        EXPECT_TRUE(info.value(QStringLiteral("CFBundleGetInfoString")).contains(QLatin1String(TAVRO_VERSION)));
    }
}

QSet<QString> HelpPagesAskedFor() {
    QSet<QString> asked = LiteralsInSources(kPlugIn.sources);
    asked.removeIf([](const QString& literal) { return !literal.endsWith(QLatin1String(".htm")); });
    return asked;
}

QDir helpIn(const QString& language) {
    return kPlugIn.resources() + u'/' + language + QStringLiteral("/Help");
}

TEST(PlugInResources, HelpPagesAskedForExist) {
    EXPECT_FALSE(HelpPagesAskedFor().isEmpty());
    for (const QString& language : kPlugIn.languages()) {
        for (const QString& page : HelpPagesAskedFor()) {
            EXPECT_TRUE(QFile::exists(helpIn(language).filePath(page))) << (language + u' ' + page).toStdString();
        }
    }
}

// Help is read by following links: each must lead somewhere, and each page must be reached from the start page or from
// one that a Help button opens.
void expectLinkedPages(const QDir& help) {
    static const QRegularExpression link(QStringLiteral(R"re(href="([^"#]*)(?:#([^"]*))?")re"));
    QSet<QString> reached;
    QStringList open = HelpPagesAskedFor().values() + QStringList{QStringLiteral("index.html")};
    while (!open.isEmpty()) {
        const QString page = open.takeLast();
        if (reached.contains(page)) {
            continue;
        }
        reached.insert(page);
        QFile file(help.filePath(page));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << page.toStdString();
        const QString text = QString::fromUtf8(file.readAll());
        for (auto links = link.globalMatch(text); links.hasNext();) {
            const QRegularExpressionMatch match = links.next();
            const QString target =
                match.captured(1).isEmpty() ? page : QDir::cleanPath(QFileInfo(page).dir().filePath(match.captured(1)));
            open += target;
            QFile there(help.filePath(target));
            ASSERT_TRUE(there.open(QIODevice::ReadOnly)) << page.toStdString() << " links " << target.toStdString();
            EXPECT_TRUE(match.captured(2).isEmpty() ||
                        there.readAll().contains("name=\"" + match.captured(2).toUtf8() + "\""))
                << page.toStdString() << " links " << match.captured(0).toStdString();
        }
    }
    QSet<QString> present;
    QDirIterator files(help.path(), {QStringLiteral("*.htm*")}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        present.insert(help.relativeFilePath(files.next()));
    }
    EXPECT_EQ(Listed(present - reached), "") << "no link leads to these";
}

TEST(PlugInResources, HelpPagesAreLinked) {
    for (const QString& language : kPlugIn.languages()) {
        SCOPED_TRACE(language.toStdString());
        expectLinkedPages(helpIn(language));
    }
}

}  // namespace
