// Where a watermark lies on its page.
#include "watermark/editor/mark_geometry.h"

#include <gtest/gtest.h>
#include <limits>

namespace {

WatermarkRecord OnPage(double width, double height) {
    WatermarkRecord record = {};
    record.paperExtentA = height;
    record.paperExtentB = width;
    record.scale = 100;
    return record;
}

TEST(MarkGeometry, ACornerIsTheMiddleOfATurnedBoxSeenFromThere) {
    // The three watermarks of the first start are in the middle of Letter: text widths of Arial at 72 points.
    WatermarkRecord record = OnPage(612, 792);
    record.angle = 45;
    struct {
        double width, x, y;
    } constexpr kDefaults[] = {
        {156.02, 280.627441, 311.049927}, {380.2, 201.350601, 231.773102}, {168.05, 276.36319, 306.785675}};
    for (const auto& mark : kDefaults) {
        PlaceMark(&record, {mark.width, 72 * kTextBoxHeight});
        EXPECT_NEAR(record.xPosition, mark.x, 0.1);
        EXPECT_NEAR(record.yPosition, mark.y, 0.1);
    }
    record.angle = 90;
    record.scale = 50;
    record.xOffset = 100;
    record.yOffset = -10;
    PlaceMark(&record, {200, 100});
    EXPECT_NEAR(record.xPosition, 306 + 100 + 25, 1e-9);
    EXPECT_NEAR(record.yPosition, 396 - 10 - 50, 1e-9);
}

TEST(MarkGeometry, APageIsThePanelsOrLetter) {
    EXPECT_EQ(PageOfRecord(OnPage(841.89, 595.276)).width, 841.89);
    for (const double bad :
         {0.0, -1.0, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(PageOfRecord(OnPage(bad, 500)).width, 612) << bad;
        EXPECT_EQ(PageOfRecord(OnPage(500, bad)).height, 792) << bad;
    }
}

TEST(MarkGeometry, AViewShowsTheWholePageInItsMiddle) {
    for (const PageSize page : {PageSize{612, 792}, PageSize{841.89, 595.276}}) {
        const PageView view(page, 400, 300, 10);
        const PagePoint low = view.toView({0, 0});
        const PagePoint high = view.toView({page.width, page.height});
        EXPECT_NEAR(low.x + high.x, 400, 1e-9);
        EXPECT_NEAR(low.y + high.y, 300, 1e-9);
        EXPECT_GE(low.x, 10 - 1e-9);
        EXPECT_GE(high.y, 10 - 1e-9);
        EXPECT_NEAR((high.x - low.x) / (low.y - high.y), page.width / page.height, 1e-9);
        const PagePoint back = view.toPage(view.toView({12, 34}));
        EXPECT_NEAR(back.x, 12, 1e-9);
        EXPECT_NEAR(back.y, 34, 1e-9);
    }
    EXPECT_GT(PageView({612, 792}, 5, 5, 10).scale(), 0) << "a view without room";
}

TEST(MarkGeometry, ADraggedMarkStaysOnThePageAndIsCaughtByItsMiddle) {
    const PageSize page{600, 800};
    EXPECT_EQ(OffsetsAfterDrag({310, 500}, page, 5).x, 10);
    EXPECT_EQ(OffsetsAfterDrag({310, 500}, page, 5).y, 100);
    EXPECT_EQ(OffsetsAfterDrag({304, 396}, page, 5).x, 0);
    EXPECT_EQ(OffsetsAfterDrag({304, 394}, page, 5).y, -6);
    EXPECT_EQ(OffsetsAfterDrag({-50, 9000}, page, 5).x, -300);
    EXPECT_EQ(OffsetsAfterDrag({-50, 9000}, page, 5).y, 400);
}

TEST(MarkGeometry, ATurnedMarkIsTakenWhereItsInkIs) {
    const PagePoint middle{300, 400};
    const PageSize box{200, 20};
    EXPECT_TRUE(IsOnMark({360, 460}, middle, box, 45));
    EXPECT_FALSE(IsOnMark({360, 340}, middle, box, 45));
    EXPECT_TRUE(IsOnMark({360, 340}, middle, box, -45));
    EXPECT_TRUE(IsOnMark({395, 405}, middle, box, 0));
    EXPECT_FALSE(IsOnMark({395, 415}, middle, box, 0));
}

}  // namespace
