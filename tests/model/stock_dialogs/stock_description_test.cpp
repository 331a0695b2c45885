// The dialog that asks for the description of a paper.

#include "model/stock_dialogs/stock_description.h"
#include "tests/model/stock_dialogs/stock_fixture.h"

namespace {

constexpr SInt32 kDescription = 20200;

class StockDescriptionTest : public StockDialogTest {
protected:
    SInt16 run(DialogMode mode, const Step& step) {
        SInt16 result = 0;
        during([&] { return RunModalStockDescriptionSetup(plugin.bundle(), mode, JobContext::job, &stock, &result); },
               {step});
        return result;
    }

    Stock stock;
};

TEST_F(StockDescriptionTest, OnlyEditingStartsWithTheOldOne) {
    stock.setDescription(CFSTR("Letters"));
    EXPECT_EQ(run(DialogMode::add,
                  [](WindowRef window) {
                      EXPECT_EQ(text(window, kDescription), "");
                      ControlRef focused = nullptr;
                      GetKeyboardFocus(window, &focused);
                      EXPECT_EQ(focused, control(window, kDescription));
                      type(window, kDescription, "Lost");
                      clickCancel(window);
                  }),
              kStockDescriptionCancel);
    EXPECT_EQ(Text(stock.description()), "Letters");

    EXPECT_EQ(run(DialogMode::edit,
                  [](WindowRef window) {
                      EXPECT_EQ(text(window, kDescription), "Letters");
                      type(window, kDescription, "Geschäftsbriefe, 2. Fach");
                      clickOK(window);
                  }),
              kStockDescriptionOK);
    EXPECT_EQ(Text(stock.description()), "Geschäftsbriefe, 2. Fach");
}

}  // namespace
