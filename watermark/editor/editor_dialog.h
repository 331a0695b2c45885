// The watermark editor's window.
#pragma once

#include "watermark/editor/color_button.h"
#include "watermark/editor/mark_history.h"
#include "watermark/editor/mark_painter.h"
#include "watermark/editor/page_preview.h"

#include <QComboBox>
#include <QDialog>
#include <QDoubleSpinBox>
#include <QFormLayout>
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

    /// Gives an input its name for tests and scripts, its tooltip (and what a screen reader says) by key.
    template <typename Input>
    Input* named(Input* input, const char* name, const char* tipKey);
    QSpinBox* makeNumber(const char* name, const char* tipKey, const char* suffixKey, int least, int most,
                         MarkChange what, SInt32 WatermarkRecord::*field);
    QDoubleSpinBox* makeOffset(const char* name, const char* tipKey, float WatermarkRecord::*field);
    void addRow(QFormLayout* form, const char* labelKey, QWidget* field);

    /// One step of the user's.
    void edit(MarkChange what, const Edit& change);
    void chooseFamily(const QString& family);
    void chooseFont(const QString& style);
    void choosePicture();
    /// Puts the record into every control.
    void refresh();
    void refreshFont(const WatermarkRecord& record);
    void refreshNotice(const WatermarkRecord& record);

    MarkFonts fonts_;
    MarkDrawing drawing_;
    MarkHistory history_;
    bool isRefreshing_ = false;

    QRadioButton* isText_ = nullptr;
    QRadioButton* isPicture_ = nullptr;
    QStackedWidget* kinds_ = nullptr;
    QLineEdit* text_ = nullptr;
    QComboBox* family_ = nullptr;
    QComboBox* style_ = nullptr;
    ColorButton* color_ = nullptr;
    QLabel* pictureName_ = nullptr;
    QComboBox* units_ = nullptr;
    struct Number {
        QSpinBox* box;
        SInt32 WatermarkRecord::*field;
    };
    struct Offset {
        QDoubleSpinBox* box;
        float WatermarkRecord::*field;
    };
    std::vector<Number> numbers_;
    std::vector<Offset> offsets_;
    PagePreview* preview_ = nullptr;
    QLabel* notice_ = nullptr;
    QPushButton* undo_ = nullptr;
    QPushButton* redo_ = nullptr;
    QPushButton* ok_ = nullptr;
};
