// The widget behind text views: many lines, of one format.
#pragma once

#include "platform/toolbox/text_entry.h"

#include <QPlainTextEdit>

/// The nib's property "lines" says how many lines there is at least room for.
class TextArea final : public QPlainTextEdit, public TextEntry {
public:
    explicit TextArea(QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    ControlEditTextSelectionRec selection() const override;
    void setSelection(ControlEditTextSelectionRec selection) override;

protected:
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;

private:
    void alignText();
    QWidget* field() override { return this; }
    bool hasLines() const override { return true; }
    void insert(const QString& text) override;
    void perform(EditAction action) override;
    void showComposition(QInputMethodEvent& event) override { QPlainTextEdit::inputMethodEvent(&event); }
};
