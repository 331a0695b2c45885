#include "watermark/editor/editor_dialog.h"

#include "watermark/editor/editor_texts.h"
#include "watermark/editor/mark_notice.h"
#include "watermark/editor/mark_values.h"

#include <QBoxLayout>
#include <QFileDialog>
#include <QFileInfo>
#include <QImageReader>
#include <QKeyEvent>
#include <QSignalBlocker>
#include <cmath>

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

/// Makes the labels of all forms below a widget equally wide, so that their fields stand below each other.
void AlignForms(QWidget* panel) {
    QList<QWidget*> labels;
    int widest = 0;
    for (const QFormLayout* form : panel->findChildren<QFormLayout*>()) {
        for (int row = 0; row < form->rowCount(); ++row) {
            if (const QLayoutItem* label = form->itemAt(row, QFormLayout::LabelRole); label && label->widget()) {
                labels.append(label->widget());
                widest = std::max(widest, label->widget()->sizeHint().width());
            }
        }
    }
    for (QWidget* label : labels) {
        label->setMinimumWidth(widest);
    }
}

void SetUnit(QDoubleSpinBox* box, const OffsetUnit& unit) {
    if (const QString suffix = EditorText(unit.suffixKey); suffix != box->suffix()) {
        box->setDecimals(unit.decimals);
        box->setRange(-kFarthestOffset / unit.points, kFarthestOffset / unit.points);
        box->setSingleStep(unit.step);
        box->setSuffix(suffix);
    }
}

/// Leaves a text alone that says the value already: its user may be about to type the next digit.
void SetShownValue(QDoubleSpinBox* box, double value) {
    const double lastDigit = std::pow(0.1, box->decimals());
    if (std::abs(box->value() - value) > lastDigit / 2) {
        box->setValue(value);
    }
}

void SelectText(QComboBox* box, const QString& text) {
    box->setCurrentIndex(box->findText(text));
}

}  // namespace

EditorDialog::EditorDialog(const WatermarkRecord& start, QWidget* parent)
    : QDialog(parent), drawing_(&fonts_), history_(start) {
    setObjectName(QStringLiteral("watermarkEditor"));
    setWindowTitle(EditorText("Editor Title"));
    auto* middle = new QHBoxLayout;
    middle->addWidget(makeForm());
    middle->addWidget(makePreview(), 1);
    auto* all = new QVBoxLayout(this);
    all->addLayout(middle, 1);
    all->addLayout(makeButtons());
    QObject::connect(history_.steps(), &QUndoStack::indexChanged, this, [this] { refresh(); });
    refresh();
    text_->selectAll();
    text_->setFocus();
}

WatermarkRecord EditorDialog::result() const {
    WatermarkRecord record = EndOfEditing(history_.record());
    PlaceMark(&record, drawing_.box());
    return record;
}

// ---- Controls

template <typename Input>
Input* EditorDialog::named(Input* input, const char* name, const char* tipKey) {
    input->setObjectName(QLatin1String(name));
    input->setToolTip(EditorText(tipKey));
    input->setAccessibleDescription(EditorText(tipKey));
    input->installEventFilter(this);
    return input;
}

void EditorDialog::addRow(QFormLayout* form, const char* labelKey, QWidget* field) {
    const QString label = EditorText(labelKey);
    field->setAccessibleName(QString(label).remove(u'&').remove(u':'));
    form->addRow(label, field);
}

QSpinBox* EditorDialog::makeNumber(const char* name, const char* tipKey, const char* suffixKey, int least, int most,
                                   MarkChange what, SInt32 WatermarkRecord::*field) {
    auto* box = named(new QSpinBox(this), name, tipKey);
    box->setRange(least, most);
    box->setSuffix(EditorText(suffixKey));
    numbers_.push_back({box, field});
    connect(box, &QSpinBox::valueChanged, this,
            [this, what, field](int value) { edit(what, [&](WatermarkRecord& record) { record.*field = value; }); });
    return box;
}

QDoubleSpinBox* EditorDialog::makeOffset(const char* name, const char* tipKey, float WatermarkRecord::*field) {
    auto* box = named(new QDoubleSpinBox(this), name, tipKey);
    offsets_.push_back({box, field});
    connect(box, &QDoubleSpinBox::valueChanged, this, [this, field](double value) {
        edit(MarkChange::offset, [&](WatermarkRecord& record) {
            record.*field = static_cast<float>(value * kOffsetUnits[record.units].points);
        });
    });
    return box;
}

QWidget* EditorDialog::makeForm() {
    isText_ = named(new QRadioButton(EditorText("Kind Text"), this), "kindText", "Kind Text Tip");
    isPicture_ = named(new QRadioButton(EditorText("Kind Picture"), this), "kindPicture", "Kind Picture Tip");
    connect(isText_, &QRadioButton::toggled, this, [this](bool isText) {
        edit(MarkChange::kind,
             [isText](WatermarkRecord& record) { record.kind = isText ? kTextWatermark : kImageWatermark; });
    });
    kinds_ = new QStackedWidget(this);
    kinds_->addWidget(makeTextPage());
    kinds_->addWidget(makePicturePage());
    kinds_->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);

    auto* panel = new QWidget(this);
    auto* column = new QVBoxLayout(panel);
    column->setContentsMargins({});
    auto* kindRow = new QHBoxLayout;
    kindRow->addWidget(isText_);
    kindRow->addWidget(isPicture_);
    kindRow->addStretch();
    auto* form = new QFormLayout;
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    addLook(form);
    addPlace(form);
    column->addLayout(kindRow);
    column->addWidget(kinds_);
    column->addLayout(form);
    notice_ = new QLabel(panel);
    notice_->setObjectName(QStringLiteral("notice"));
    notice_->setWordWrap(true);
    notice_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    notice_->setMinimumHeight(3 * fontMetrics().lineSpacing());
    column->addWidget(notice_);
    column->addStretch();
    AlignForms(panel);
    return panel;
}

QWidget* EditorDialog::makeTextPage() {
    auto* page = new QWidget(this);
    auto* form = new QFormLayout(page);
    form->setContentsMargins({});
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    text_ = named(new QLineEdit(page), "text", "Text Tip");
    connect(text_, &QLineEdit::textEdited, this, [this](const QString& text) {
        edit(MarkChange::text, [&](WatermarkRecord& record) { SetText(record.text, text.toStdString()); });
        refresh();  // a text that is too long is not taken
    });
    family_ = named(new QComboBox(page), "family", "Font Tip");
    family_->addItems(fonts_.families());
    family_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    family_->setMinimumContentsLength(18);
    connect(family_, &QComboBox::currentTextChanged, this, [this](const QString& family) { chooseFamily(family); });
    style_ = named(new QComboBox(page), "style", "Style Tip");
    connect(style_, &QComboBox::currentTextChanged, this, [this](const QString& style) { chooseFont(style); });
    addRow(form, "Text Label", text_);
    addRow(form, "Font Label", family_);
    addRow(form, "Style Label", style_);
    addRow(form, "Size Label",
           makeNumber("fontSize", "Size Tip", "Suffix Points", kSmallestFont, kLargestFont, MarkChange::fontSize,
                      &WatermarkRecord::fontSize));
    color_ = named(new ColorButton(page), "color", "Color Tip");
    color_->chosen = [this](const QColor& color) {
        edit(MarkChange::color, [&](WatermarkRecord& record) {
            record.wellColor = {color.redF(), color.greenF(), color.blueF(), color.alphaF()};
        });
        history_.endStep();
    };
    addRow(form, "Color Label", color_);
    return page;
}

QWidget* EditorDialog::makePicturePage() {
    auto* page = new QWidget(this);
    auto* row = new QVBoxLayout(page);
    row->setContentsMargins({});
    pictureName_ = new QLabel(page);
    pictureName_->setObjectName(QStringLiteral("pictureName"));
    pictureName_->setTextFormat(Qt::PlainText);
    pictureName_->setWordWrap(true);
    auto* choose = named(new QPushButton(EditorText("Choose Picture"), page), "choosePicture", "Choose Picture Tip");
    connect(choose, &QPushButton::clicked, this, [this] { choosePicture(); });
    row->addWidget(pictureName_);
    row->addWidget(choose, 0, Qt::AlignLeft);
    row->addStretch();
    return page;
}

void EditorDialog::addLook(QFormLayout* form) {
    addRow(
        form, "Density Label",
        makeNumber("density", "Density Tip", "Suffix Percent", 0, 100, MarkChange::density, &WatermarkRecord::density));
    auto* angle =
        makeNumber("angle", "Angle Tip", "Suffix Degrees", -180, 180, MarkChange::angle, &WatermarkRecord::angle);
    angle->setWrapping(true);
    angle->setSingleStep(5);
    addRow(form, "Angle Label", angle);
    auto* scale = makeNumber("scale", "Scale Tip", "Suffix Percent", kSmallestScale, kLargestScale, MarkChange::scale,
                             &WatermarkRecord::scale);
    scale->setSingleStep(5);
    addRow(form, "Scale Label", scale);
}

void EditorDialog::addPlace(QFormLayout* form) {
    addRow(form, "Across Label", makeOffset("xOffset", "Across Tip", &WatermarkRecord::xOffset));
    addRow(form, "Up Label", makeOffset("yOffset", "Up Tip", &WatermarkRecord::yOffset));
    units_ = named(new QComboBox(this), "units", "Units Tip");
    for (const OffsetUnit& unit : kOffsetUnits) {
        units_->addItem(EditorText(unit.nameKey));
    }
    connect(units_, &QComboBox::currentIndexChanged, this,
            [this](int unit) { edit(MarkChange::units, [unit](WatermarkRecord& record) { record.units = unit; }); });
    addRow(form, "Units Label", units_);
    auto* center = named(new QPushButton(EditorText("Center"), this), "center", "Center Tip");
    connect(center, &QPushButton::clicked, this, [this] {
        history_.endStep();
        edit(MarkChange::offset, [](WatermarkRecord& record) { record.xOffset = record.yOffset = 0; });
        history_.endStep();
    });
    form->addRow(QString(), center);
}

QWidget* EditorDialog::makePreview() {
    auto* panel = new QWidget(this);
    auto* form = new QFormLayout;
    auto* pages = named(new QComboBox(panel), "page", "Page Tip");
    for (const PreviewPage& page : kPreviewPages) {
        pages->addItem(EditorText(page.key));
    }
    addRow(form, "Page Label", pages);
    preview_ = named(new PagePreview(&drawing_, panel), "preview", "Preview Tip");
    preview_->setAccessibleName(EditorText("Preview Name"));
    preview_->moved = [this](PagePoint offset) {
        edit(MarkChange::offset, [&](WatermarkRecord& record) {
            record.xOffset = static_cast<float>(offset.x);
            record.yOffset = static_cast<float>(offset.y);
        });
    };
    preview_->released = [this] { history_.endStep(); };
    preview_->setPage(PageOfRecord(history_.record()));
    connect(pages, &QComboBox::currentIndexChanged, this, [this](int index) {
        preview_->setPage(index == 0 ? PageOfRecord(history_.record()) : kPreviewPages[index].size);
    });
    auto* column = new QVBoxLayout(panel);
    column->setContentsMargins({});
    column->addLayout(form);
    column->addWidget(preview_, 1);
    return panel;
}

QLayout* EditorDialog::makeButtons() {
    auto* row = new QHBoxLayout;
    undo_ = named(new QPushButton(EditorText("Undo"), this), "undo", "Undo Tip");
    undo_->setShortcut(QKeySequence::Undo);
    connect(undo_, &QPushButton::clicked, history_.steps(), &QUndoStack::undo);
    redo_ = named(new QPushButton(EditorText("Redo"), this), "redo", "Redo Tip");
    redo_->setShortcut(QKeySequence::Redo);
    connect(redo_, &QPushButton::clicked, history_.steps(), &QUndoStack::redo);
    auto* cancel = named(new QPushButton(EditorText("Cancel"), this), "cancel", "Cancel Tip");
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    ok_ = named(new QPushButton(EditorText("OK"), this), "ok", "OK Tip");
    connect(ok_, &QPushButton::clicked, this, &QDialog::accept);
    for (QPushButton* button : findChildren<QPushButton*>()) {
        button->setAutoDefault(false);
    }
    ok_->setDefault(true);
    row->addWidget(undo_);
    row->addWidget(redo_);
    row->addStretch();
    row->addWidget(cancel);
    row->addWidget(ok_);
    return row;
}

// ---- Steps

bool EditorDialog::eventFilter(QObject* watched, QEvent* event) {
    // The fields would take the keys of undo and redo for themselves, and know only their own last letters.
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->matches(QKeySequence::Undo) || key->matches(QKeySequence::Redo)) {
            event->ignore();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void EditorDialog::edit(MarkChange what, const Edit& change) {
    if (isRefreshing_) {
        return;
    }
    WatermarkRecord changed = history_.record();
    change(changed);
    changed.fontColor = InkColor(changed.wellColor, changed.density);
    history_.change(what, changed);
}

void EditorDialog::chooseFamily(const QString& family) {
    if (!isRefreshing_) {
        const std::string name = fonts_.postScriptName(family, fonts_.firstStyle(family));
        edit(MarkChange::font, [&](WatermarkRecord& record) { SetText(record.fontName, name); });
    }
}

void EditorDialog::chooseFont(const QString& style) {
    const std::string name = fonts_.postScriptName(family_->currentText(), style);
    edit(MarkChange::font, [&](WatermarkRecord& record) { SetText(record.fontName, name); });
}

void EditorDialog::choosePicture() {
    QStringList patterns;
    for (const QByteArray& format : QImageReader::supportedImageFormats()) {
        patterns.append(QStringLiteral("*.") + QString::fromLatin1(format));
    }
    const QString folder = QFileInfo(QString::fromUtf8(history_.record().filePath)).path();
    const QString path =
        QFileDialog::getOpenFileName(this, EditorText("Picture Title"), folder,
                                     EditorText("Picture Files") + QStringLiteral(" (%1)").arg(patterns.join(u' ')));
    if (!path.isEmpty()) {
        edit(MarkChange::picture, [&](WatermarkRecord& record) {
            if (SetText(record.fileName, QFileInfo(path).fileName().toStdString())) {
                SetText(record.filePath, path.toStdString());
            }
        });
        history_.endStep();
    }
}

// ---- What is shown

void EditorDialog::refresh() {
    isRefreshing_ = true;
    const WatermarkRecord& record = history_.record();
    const bool isText = record.kind != kImageWatermark;
    (isText ? isText_ : isPicture_)->setChecked(true);
    kinds_->setCurrentIndex(isText ? 0 : 1);
    if (const QString text = QString::fromUtf8(record.text); text != text_->text()) {
        text_->setText(text);
    }
    refreshFont(record);
    color_->setColor(ColorOf(record.wellColor));
    const QString picture = QString::fromUtf8(record.fileName);
    pictureName_->setText(picture.isEmpty() ? EditorText("No Picture") : picture);
    for (const Number& number : numbers_) {
        if (number.box->value() != record.*number.field) {
            number.box->setValue(record.*number.field);
        }
    }
    units_->setCurrentIndex(record.units);
    const OffsetUnit& unit = kOffsetUnits[record.units];
    for (const Offset& offset : offsets_) {
        SetUnit(offset.box, unit);
        SetShownValue(offset.box, record.*offset.field / unit.points);
    }
    drawing_.setRecord(record);
    preview_->setRecord(record);
    refreshNotice(record);
    undo_->setEnabled(history_.steps()->canUndo());
    redo_->setEnabled(history_.steps()->canRedo());
    isRefreshing_ = false;
}

void EditorDialog::refreshFont(const WatermarkRecord& record) {
    const NamedFont& font = fonts_.named(record.fontName);
    const QString family = font.face ? QString::fromStdString(font.face->family) : QString();
    SelectText(family_, family);
    if (const QStringList styles = fonts_.styles(family); style_->property("styles").toStringList() != styles) {
        style_->setProperty("styles", styles);
        style_->clear();
        style_->addItems(styles);
    }
    SelectText(style_, font.face ? QString::fromStdString(font.face->style) : QString());
}

void EditorDialog::refreshNotice(const WatermarkRecord& record) {
    const NamedFont& font = fonts_.named(record.fontName);
    const MarkNotice notice = NoticeOf(record, font, drawing_.hasPicture());
    QString text = notice.key != nullptr ? EditorText(notice.key) : QString();
    text.replace(QStringLiteral("%1"), QString::fromUtf8(record.fontName));
    text.replace(QStringLiteral("%2"), font.face ? QString::fromStdString(font.face->family) : QString());
    notice_->setTextFormat(Qt::PlainText);
    notice_->setText(text);
    ok_->setEnabled(!notice.isFault);
}
