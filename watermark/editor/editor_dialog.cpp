#include "watermark/editor/editor_dialog.h"

#include "watermark/editor/editor_fields.h"
#include "watermark/editor/editor_texts.h"
#include "watermark/editor/mark_notice.h"
#include "watermark/editor/mark_values.h"
#include "watermark/editor/picture_chooser.h"

#include <QBoxLayout>
#include <QFileInfo>
#include <QKeyEvent>

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
    for (QWidget* field : findChildren<QWidget*>()) {
        field->installEventFilter(this);
    }
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

QSpinBox* EditorDialog::makeNumber(const char* name, const char* tipKey, const char* suffixKey, int least, int most,
                                   MarkChange what, SInt32 WatermarkRecord::*field) {
    auto* box = Described(new QSpinBox(this), name, tipKey);
    box->setRange(least, most);
    box->setSuffix(EditorText(suffixKey));
    numbers_.push_back({box, field});
    connect(box, &QSpinBox::valueChanged, this,
            [this, what, field](int value) { edit(what, [&](WatermarkRecord& record) { record.*field = value; }); });
    return box;
}

QWidget* EditorDialog::makeForm() {
    isText_ = Described(new QRadioButton(EditorText("Kind Text"), this), "kindText", "Kind Text Tip");
    isPicture_ = Described(new QRadioButton(EditorText("Kind Picture"), this), "kindPicture", "Kind Picture Tip");
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
    text_ = Described(new QLineEdit(page), "text", "Text Tip");
    connect(text_, &QLineEdit::textEdited, this, [this](const QString& text) {
        edit(MarkChange::text, [&](WatermarkRecord& record) { SetText(record.text, text.toStdString()); });
        refresh();  // a text that is too long is not taken
    });
    AddRow(form, "Text Label", text_);
    font_.emplace(&fonts_, form);
    font_->chosen = [this](const std::string& name) {
        edit(MarkChange::font, [&](WatermarkRecord& record) { SetText(record.fontName, name); });
    };
    AddRow(form, "Size Label",
           makeNumber("fontSize", "Size Tip", "Suffix Points", kSmallestFont, kLargestFont, MarkChange::fontSize,
                      &WatermarkRecord::fontSize));
    color_ = Described(new ColorButton(page), "color", "Color Tip");
    color_->chosen = [this](const QColor& color) {
        edit(MarkChange::color, [&](WatermarkRecord& record) {
            record.wellColor = {color.redF(), color.greenF(), color.blueF(), color.alphaF()};
        });
        history_.endStep();
    };
    AddRow(form, "Color Label", color_);
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
    auto* choose =
        Described(new QPushButton(EditorText("Choose Picture"), page), "choosePicture", "Choose Picture Tip");
    connect(choose, &QPushButton::clicked, this, [this] { choosePicture(); });
    row->addWidget(pictureName_);
    row->addWidget(choose, 0, Qt::AlignLeft);
    row->addStretch();
    return page;
}

void EditorDialog::addLook(QFormLayout* form) {
    AddRow(
        form, "Density Label",
        makeNumber("density", "Density Tip", "Suffix Percent", 0, 100, MarkChange::density, &WatermarkRecord::density));
    auto* angle =
        makeNumber("angle", "Angle Tip", "Suffix Degrees", -180, 180, MarkChange::angle, &WatermarkRecord::angle);
    angle->setWrapping(true);
    angle->setSingleStep(5);
    AddRow(form, "Angle Label", angle);
    auto* scale = makeNumber("scale", "Scale Tip", "Suffix Percent", kSmallestScale, kLargestScale, MarkChange::scale,
                             &WatermarkRecord::scale);
    scale->setSingleStep(5);
    AddRow(form, "Scale Label", scale);
}

void EditorDialog::addPlace(QFormLayout* form) {
    place_.emplace(form);
    place_->moved = [this](float WatermarkRecord::*field, float points) {
        edit(MarkChange::offset, [&](WatermarkRecord& record) { record.*field = points; });
    };
    place_->unitChosen = [this](SInt32 unit) {
        edit(MarkChange::units, [unit](WatermarkRecord& record) { record.units = unit; });
    };
    auto* center = Described(new QPushButton(EditorText("Center"), this), "center", "Center Tip");
    connect(center, &QPushButton::clicked, this, [this] {
        history_.endStep();
        edit(MarkChange::offset, [](WatermarkRecord& record) { record.xOffset = record.yOffset = 0; });
        history_.endStep();
    });
    form->addRow(QString(), center);
}

QWidget* EditorDialog::makePreview() {
    auto* pane = new PreviewPane(&drawing_, PageOfRecord(history_.record()), this);
    preview_ = pane->preview();
    preview_->moved = [this](PagePoint offset) {
        edit(MarkChange::offset, [&](WatermarkRecord& record) {
            record.xOffset = static_cast<float>(offset.x);
            record.yOffset = static_cast<float>(offset.y);
        });
    };
    preview_->released = [this] { history_.endStep(); };
    return pane;
}

QLayout* EditorDialog::makeButtons() {
    auto* row = new QHBoxLayout;
    undo_ = Described(new QPushButton(EditorText("Undo"), this), "undo", "Undo Tip");
    undo_->setShortcut(QKeySequence::Undo);
    connect(undo_, &QPushButton::clicked, history_.steps(), &QUndoStack::undo);
    redo_ = Described(new QPushButton(EditorText("Redo"), this), "redo", "Redo Tip");
    redo_->setShortcut(QKeySequence::Redo);
    connect(redo_, &QPushButton::clicked, history_.steps(), &QUndoStack::redo);
    auto* cancel = Described(new QPushButton(EditorText("Cancel"), this), "cancel", "Cancel Tip");
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    ok_ = Described(new QPushButton(EditorText("OK"), this), "ok", "OK Tip");
    connect(ok_, &QPushButton::clicked, this, &QDialog::accept);
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

void EditorDialog::choosePicture() {
    if (const QString path = AskForPicture(); !path.isEmpty()) {
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
    font_->show(fonts_.named(record.fontName));
    color_->setColor(ColorOf(record.wellColor));
    const QString picture = QString::fromUtf8(record.fileName);
    pictureName_->setText(picture.isEmpty() ? EditorText("No Picture") : picture);
    for (const Number& number : numbers_) {
        if (number.box->value() != record.*number.field) {
            number.box->setValue(record.*number.field);
        }
    }
    place_->show(record);
    drawing_.setRecord(record);
    preview_->setRecord(record);
    refreshNotice(record);
    undo_->setEnabled(history_.steps()->canUndo());
    redo_->setEnabled(history_.steps()->canRedo());
    isRefreshing_ = false;
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
