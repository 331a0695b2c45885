// The preview with the choice of the page that it shows.
#pragma once

#include "watermark/editor/page_preview.h"

class PreviewPane : public QWidget {
public:
    /// The drawing is somebody else's, and outlives the widget.
    PreviewPane(const MarkDrawing* drawing, PageSize pageOfJob, QWidget* parent);

    [[nodiscard]] PagePreview* preview() const { return preview_; }

private:
    PagePreview* preview_ = nullptr;
};
