#include "watermark/editor/preview_pane.h"

#include "watermark/editor/editor_fields.h"
#include "watermark/editor/editor_texts.h"

#include <QComboBox>

namespace {

struct PreviewPage {
    const char* key;
    PageSize size;  // points; nothing for the job's page
};
constexpr PreviewPage kPreviewPages[] = {
    // text, width, height
    {"Page Of Job", {}},
    {"Page Letter", {612, 792}},
    {"Page Letter Landscape", {792, 612}},
    {"Page A4", {595.276, 841.89}},
    {"Page A4 Landscape", {841.89, 595.276}},
};

}  // namespace

PreviewPane::PreviewPane(const MarkDrawing* drawing, PageSize pageOfJob, QWidget* parent) : QWidget(parent) {
    auto* pages = Described(new QComboBox(this), "page", "Page Tip");
    for (const PreviewPage& page : kPreviewPages) {
        pages->addItem(EditorText(page.key));
    }
    preview_ = Described(new PagePreview(drawing, this), "preview", "Preview Tip");
    preview_->setAccessibleName(EditorText("Preview Name"));
    preview_->setPage(pageOfJob);
    connect(pages, &QComboBox::currentIndexChanged, this,
            [this, pageOfJob](int index) { preview_->setPage(index == 0 ? pageOfJob : kPreviewPages[index].size); });
    auto* form = new QFormLayout;
    AddRow(form, "Page Label", pages);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->addLayout(form);
    column->addWidget(preview_, 1);
}
