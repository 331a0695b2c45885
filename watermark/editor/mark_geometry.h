// Where a watermark lies on a page, and where both are in a view.
//
// Points, y upwards from the page's lower left corner; angles are degrees, counter-clockwise.
#pragma once

#include "watermark/records/watermark_record.h"

struct PagePoint {
    double x = 0;
    double y = 0;
};

struct PageSize {
    double width = 0;
    double height = 0;
};

/// The page of the job that the record is edited for; Letter when the panel did not know it.
PageSize PageOfRecord(const WatermarkRecord& record);

/// The middle of the mark: the page's, moved by the record's offsets. So a mark that was not moved is in the middle
/// of every page.
PagePoint MiddleOfMark(const WatermarkRecord& record, PageSize page);

/// The lower left corner of a box of that size around the middle, which the angle turned about the middle.
PagePoint CornerOfMark(PagePoint middle, PageSize box, double angle);

/// Puts the mark's corner into the record, for the job's page; the box is the mark's before it is scaled.
void PlaceMark(WatermarkRecord* record, PageSize box);

/// A page in a view, at true proportions and as large as fits, in the middle. The view's y goes down.
class PageView {
public:
    PageView(PageSize page, double viewWidth, double viewHeight, double margin);

    [[nodiscard]] double scale() const { return scale_; }  // of the view for a point
    [[nodiscard]] double left() const { return left_; }
    [[nodiscard]] double top() const { return top_; }
    [[nodiscard]] PagePoint toView(PagePoint point) const;
    [[nodiscard]] PagePoint toPage(PagePoint point) const;

private:
    double height_;  // of the page
    double scale_;
    double left_;
    double top_;
};

/// Whether the point is inside of the turned box around the middle.
bool IsOnMark(PagePoint point, PagePoint middle, PageSize box, double angle);

/// The offsets of a mark that is dragged to have its middle there. The middle stays on the page, and is caught by the
/// page's own middle lines when it comes as near as `reach`.
PagePoint OffsetsAfterDrag(PagePoint middle, PageSize page, double reach);
