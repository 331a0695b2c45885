// The watermark editor's window.
#pragma once

#include "watermark/editor/color_button.h"
#include "watermark/editor/font_fields.h"
#include "watermark/editor/mark_history.h"
#include "watermark/editor/place_fields.h"
#include "watermark/editor/preview_pane.h"

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QStackedWidget>

class EditorDialog : public QDialog {
public:
    EditorDialog(const WatermarkRecord& start, QWidget* parent);

    /// What was made, for a dialog that was accepted.
    [[nodiscard]] WatermarkRecord result() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    using Edit = std::function<void(WatermarkRecord&)>;

    QWidget* makeForm();
    QWidget* makeTextPage();
    QWidget* makePicturePage();
    void addLook(QFormLayout* form);
    void addPlace(QFormLayout* form);
    QWidget* makePreview();
    QLayout* makeButtons();

    QSpinBox* makeNumber(const char* name, const char* tipKey, const char* suffixKey, int least, int most,
                         MarkChange what, SInt32 WatermarkRecord::*field);

    /// One step of the user's.
    void edit(MarkChange what, const Edit& change);
    void choosePicture();
    /// Puts the record into every control.
    void refresh();
    void refreshNotice(const WatermarkRecord& record);

    MarkFonts fonts_;
    MarkDrawing drawing_;
    MarkHistory history_;
    bool isRefreshing_ = false;

    QRadioButton* isText_ = nullptr;
    QRadioButton* isPicture_ = nullptr;
    QStackedWidget* kinds_ = nullptr;
    QLineEdit* text_ = nullptr;
    std::optional<FontFields> font_;
    ColorButton* color_ = nullptr;
    QLabel* pictureName_ = nullptr;
    std::optional<PlaceFields> place_;
    struct Number {
        QSpinBox* box;
        SInt32 WatermarkRecord::*field;
    };
    std::vector<Number> numbers_;
    PagePreview* preview_ = nullptr;
    QLabel* notice_ = nullptr;
    QPushButton* undo_ = nullptr;
    QPushButton* redo_ = nullptr;
    QPushButton* ok_ = nullptr;
};
