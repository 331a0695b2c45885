// The widget behind edit texts and password texts.
#pragma once

#include "platform/toolbox/text_entry.h"
#include "platform/toolbox/user_input.h"

#include <QLineEdit>

class EditField final : public QLineEdit, public TextEntry {
public:
    explicit EditField(QWidget* parent = nullptr) : QLineEdit(parent) {}

    ControlEditTextSelectionRec selection() const override;
    void setSelection(ControlEditTextSelectionRec selection) override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QWidget* field() override { return this; }
    bool hasLines() const override { return false; }
    void insert(const QString& text) override { QLineEdit::insert(text); }
    void perform(EditAction action) override;
    void showComposition(QInputMethodEvent& event) override { QLineEdit::inputMethodEvent(&event); }
    /// Tells the handlers; false when none of them took it.
    bool sendStepKey(const QKeyEvent& key);
    void sendFocus(ControlPartCode part, Qt::FocusReason reason);

    WheelNotches wheel_;
};
