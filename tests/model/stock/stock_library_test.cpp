// The user's library of papers: what comes back, what others do to it, and files that nobody can use.

#include "model/stock/stock_library.h"
#include "model/stock/stock_columns.h"
#include "model/stock/stock_search.h"

#include "platform/foundation/text.h"
#include "tests/platform/files/temporary_folder.h"
#include "tests/support/dialogs_at_once.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;

class StockLibraryTest : public testing::Test {
protected:
    StockLibraryTest() {
        setenv("XDG_DATA_HOME", std::string(folder_ / "data").c_str(), 1);
        fs::create_directories(folder_ / "data/tavro/Tavro");
    }
    ~StockLibraryTest() override { unsetenv("XDG_DATA_HOME"); }

    std::string file() const { return folder_ / "data/tavro/Tavro/com.tavro.print.papers.plist"; }
    CFRef<CFURLRef> other() const { return makeFileURL(folder_ / "given.tavropapers"); }

    static Stock paper(const char* name, SInt32 weight = kTicketValueUnset) {
        Stock stock;
        stock.setSize(4);
        stock.setType(kStockTypeHeavyGlossy);
        stock.setCustomName(makeString(name).get());
        stock.setWeight(weight);
        return stock;
    }
    static StockLibraryFault store(const Stock& stock, const char* own = nullptr, bool mayReplace = false) {
        return StoreStock(stock, own == nullptr ? nullptr : makeString(own).get(), mayReplace).fault;
    }
    static std::string names(const StockLibrary& library = UsersStockLibrary()) {
        std::string all;
        for (const Stock& stock : library.papers) {
            all += (all.empty() ? "" : ", ") + utf8Text(stock.customName());
        }
        return all;
    }
    void write(const std::string& content) const { std::ofstream(file()) << content; }
    std::string content() const {
        std::ifstream input(file());
        return {std::istreambuf_iterator<char>(input), {}};
    }

private:
    TemporaryFolder folder_;
};

TEST_F(StockLibraryTest, PapersComeBackWhole) {
    Stock full = paper("Émail", 250);
    full.setWidth(21000);
    full.setLength(40000);
    full.setColor(kStockColorCustom);
    full.setCustomColor(CFSTR("Mauve"));
    full.setModulus(5);
    full.setPunched(kStockPunched);
    full.setSidesCoated(3);
    full.setCoatingType(2);
    full.setFinish(4);
    full.setGrain(1);
    full.setDescription(CFSTR("For menus"));
    full.setComment(CFSTR("no rush"));
    EXPECT_EQ(store(paper("Zebra")), StockLibraryFault::none);
    EXPECT_EQ(store(full), StockLibraryFault::none);
    EXPECT_EQ(store(paper("apple")), StockLibraryFault::none);
    EXPECT_EQ(names(), "apple, Émail, Zebra") << "in the order of words, not of bytes";
    EXPECT_TRUE(UsersStockLibrary().papers[1] == full);
    struct stat status {};
    ASSERT_EQ(stat(file().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600U);
}

TEST_F(StockLibraryTest, ANameBelongsToOnePaper) {
    store(paper("Cover", 200));
    EXPECT_EQ(store(paper("COVER", 250)), StockLibraryFault::nameTaken);
    EXPECT_EQ(UsersStockLibrary().papers.front().weight(), 200);
    EXPECT_EQ(store(paper("Insert", 80)), StockLibraryFault::none);
    EXPECT_EQ(store(paper("cover", 90), "Cover"), StockLibraryFault::none) << "its own name in other letters";
    EXPECT_EQ(store(paper("Insert", 70), "cover"), StockLibraryFault::nameTaken);
    EXPECT_EQ(store(paper("Insert", 70), "cover", true), StockLibraryFault::none);
    EXPECT_EQ(names(), "Insert") << "both places became one";
    EXPECT_EQ(utf8Text(CopyFreeStockName(CFSTR("insert")).get()), "insert 2");
}

TEST_F(StockLibraryTest, SeveralDialogsLoseNoPaper) {
    saveInDialogsAtOnce(
        [this](const std::string& name) { return store(paper(name.c_str())) == StockLibraryFault::none; });
    EXPECT_EQ(UsersStockLibrary().papers.size(), 80U);
}

TEST_F(StockLibraryTest, PapersOfOthersAreAddedOnce) {
    store(paper("Cover", 200));
    store(paper("Plain", 80));
    std::vector<const Stock*> all;
    const StockLibrary before = UsersStockLibrary();
    std::ranges::transform(before.papers, std::back_inserter(all), [](const Stock& stock) { return &stock; });
    ASSERT_EQ(WriteStockLibrary(other().get(), all).fault, StockLibraryFault::none);

    DeleteStocks(std::vector{all[1]});
    store(paper("Cover", 300), "Cover");
    EXPECT_EQ(names(), "Cover");
    std::size_t added = 0;
    EXPECT_EQ(AddStocks(ReadStockLibrary(other().get()).papers, &added).fault, StockLibraryFault::none);
    EXPECT_EQ(added, 2U);
    EXPECT_EQ(names(), "Cover, Cover 2, Plain");
    EXPECT_EQ(UsersStockLibrary().papers.front().weight(), 300) << "the user's own stays";
    AddStocks(std::vector{paper("Plain", 80)}, &added);
    EXPECT_EQ(added, 0U);
}

TEST_F(StockLibraryTest, AFileOfANewerVersionIsReadAndNeverChanged) {
    store(paper("Cover"));
    std::string newer = content();
    const std::size_t place = newer.find("<integer>1</integer>", newer.find("Version"));
    ASSERT_NE(place, std::string::npos);
    write(newer.replace(place, 20, "<integer>2</integer>"));
    EXPECT_EQ(names(), "Cover");
    EXPECT_EQ(UsersStockLibrary().fault, StockLibraryFault::newer);
    EXPECT_FALSE(UsersStockLibrary().canBeChanged());
    EXPECT_EQ(store(paper("Other")), StockLibraryFault::newer);
    EXPECT_EQ(DeleteStocks({}).fault, StockLibraryFault::newer);
    EXPECT_EQ(content(), newer);
}

TEST_F(StockLibraryTest, ADamagedFileIsToldAndKept) {
    store(paper("Cover"));
    const std::string damaged = content().substr(0, 300);
    write(damaged);
    EXPECT_EQ(UsersStockLibrary().fault, StockLibraryFault::unreadable);
    EXPECT_EQ(store(paper("Plain")), StockLibraryFault::none);
    EXPECT_EQ(names(), "Plain");
    std::ifstream kept(file() + ".unreadable");
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(kept), {}), damaged);

    const std::string foreign = "<plist version=\"1.0\"><dict><key>Papers</key><string>none</string></dict></plist>";
    write(foreign);
    EXPECT_EQ(UsersStockLibrary().fault, StockLibraryFault::otherFile);
    EXPECT_EQ(store(paper("Plain")), StockLibraryFault::otherFile);
    EXPECT_EQ(content(), foreign);
    EXPECT_EQ(ReadStockLibrary(other().get()).fault, StockLibraryFault::outOfReach);
}

TEST_F(StockLibraryTest, EntriesWithoutANameAreLeftAlone) {
    const std::string entries = "<string>?</string><dict><key>Weight</key><integer>1</integer></dict>";
    write(
        "<plist version=\"1.0\"><dict><key>Format</key><string>com.tavro.print.papers</string><key>Version</key>"
        "<integer>1</integer><key>Papers</key><array>" +
        entries + "</array></dict></plist>");
    EXPECT_EQ(names(), "");
    EXPECT_EQ(store(paper("Plain")), StockLibraryFault::none);
    EXPECT_EQ(names(), "Plain");
    EXPECT_NE(content().find("<key>Weight</key>"), std::string::npos);
}

TEST_F(StockLibraryTest, IsOrderedByWhatPapersSay) {
    std::vector<Stock> papers{paper("a", 90), paper("b"), paper("c", 250), paper("d", 90), paper("e", 100)};
    papers[0].setDescription(CFSTR("\u00C4rger"));
    papers[1].setDescription(CFSTR("zoo"));
    papers[2].setDescription(CFSTR("AZ"));
    papers[4].setCustomNameOnly(true);
    StockOrder order(nullptr, papers);
    const auto names = [&](StockColumn column) {
        std::vector<std::size_t> places{0, 1, 2, 3, 4};
        std::ranges::stable_sort(places, [&](auto one, auto two) { return order.comesBefore(one, two, column); });
        std::string all;
        for (const std::size_t place : places) {
            all += utf8Text(papers[place].customName());
        }
        return all;
    };
    EXPECT_EQ(names(StockColumn::weight), "adcbe") << "as numbers, and those without one at the end";
    EXPECT_EQ(names(StockColumn::description), "acbde");
    EXPECT_EQ(names(StockColumn::name), "abcde");
}

TEST_F(StockLibraryTest, FindsSizesOfTheUsersOwnByTheirNumbers) {
    std::vector<Stock> papers{paper("small"), paper("large")};
    for (Stock& stock : papers) {
        stock.setSize(kStockSizeCustom);
        stock.setLength(40000);
    }
    papers[0].setWidth(12300);
    papers[1].setWidth(31700);
    StockSearch search(nullptr, papers);
    EXPECT_EQ(search.find(CFSTR("317")), std::vector<std::size_t>{1});
    EXPECT_EQ(search.find(CFSTR("400")), (std::vector<std::size_t>{0, 1}));
    EXPECT_EQ(search.find(makeString("٣١٧").get()), std::vector<std::size_t>{1});
}

/// As East Asian keyboards type them, in full or half width.
TEST_F(StockLibraryTest, FindsWordsOfEveryCaseAndWidth) {
    const std::vector<Stock> papers{paper("Ｇloss カード"), paper("gloss ｶｰﾄﾞ ８０")};
    StockSearch search(nullptr, papers);
    for (const char* typed : {"GLOSS", "ｇｌｏｓｓ", "カード", "ｶｰﾄﾞ", "gloss　カード"}) {
        EXPECT_EQ(search.find(makeString(typed).get()), (std::vector<std::size_t>{0, 1})) << typed;
    }
    EXPECT_EQ(search.find(CFSTR("80")), std::vector<std::size_t>{1});
}

}  // namespace
