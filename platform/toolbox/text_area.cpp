// The field of many lines: how Qt's events and editing actions meet the announcements.

#include "platform/toolbox/text_area.h"

#include <QContextMenuEvent>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <algorithm>

namespace {

void removeUpTo(QTextCursor cursor, QTextCursor::MoveOperation place) {
    if (!cursor.hasSelection()) {
        cursor.movePosition(place, QTextCursor::KeepAnchor);
    }
    cursor.removeSelectedText();
}

}  // namespace

TextArea::TextArea(QWidget* parent) : QPlainTextEdit(parent) {
    setTabChangesFocus(true);
    alignText();
}

void TextArea::changeEvent(QEvent* event) {
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange) {
        alignText();
    }
}

/// Qt has text of any direction at the left here.
void TextArea::alignText() {
    const Qt::Alignment side = isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft;
    QTextOption option = document()->defaultTextOption();
    if (option.alignment() != side) {  // each setting lays the text out again
        option.setAlignment(side);
        document()->setDefaultTextOption(option);
    }
}

QSize TextArea::sizeHint() const {
    const QSize usual = QPlainTextEdit::sizeHint();
    return property("lines").isValid() ? QSize(usual.width(), minimumSizeHint().height()) : usual;
}

QSize TextArea::minimumSizeHint() const {
    const QSize least = QPlainTextEdit::minimumSizeHint();
    const int around = 2 * (frameWidth() + static_cast<int>(document()->documentMargin()));
    return {least.width(), std::max(least.height(), property("lines").toInt() * fontMetrics().lineSpacing() + around)};
}

ControlEditTextSelectionRec TextArea::selection() const {
    return {textCursor().selectionStart(), textCursor().selectionEnd()};
}

void TextArea::setSelection(ControlEditTextSelectionRec selection) {
    const int length = document()->characterCount() - 1;  // the document counts the end of its last paragraph
    const int start = std::clamp(selection.selStart, 0, length);
    QTextCursor cursor = textCursor();
    cursor.setPosition(start);
    cursor.setPosition(std::clamp(selection.selEnd, start, length), QTextCursor::KeepAnchor);
    setTextCursor(cursor);
}

void TextArea::insert(const QString& text) {
    textCursor().insertText(text);
    ensureCursorVisible();
}

void TextArea::perform(EditAction action) {
    switch (action) {
        case EditAction::backspace:
            textCursor().deletePreviousChar();
            break;
        case EditAction::deleteForward:
            textCursor().deleteChar();
            break;
        case EditAction::deleteBackwardWord:
            removeUpTo(textCursor(), QTextCursor::PreviousWord);
            break;
        case EditAction::deleteForwardWord:
            removeUpTo(textCursor(), QTextCursor::NextWord);
            break;
        case EditAction::deleteLine:
            moveCursor(QTextCursor::StartOfBlock);
            removeUpTo(textCursor(), QTextCursor::EndOfBlock);
            break;
        case EditAction::deleteToLineEnd:
            removeUpTo(textCursor(), QTextCursor::EndOfBlock);
            break;
        case EditAction::cut:
            cut();
            break;
        case EditAction::undo:
            undo();
            break;
        case EditAction::redo:
            redo();
            break;
    }
    ensureCursorVisible();
}

void TextArea::keyPressEvent(QKeyEvent* event) {
    if (!isReadOnly() && enterKey(*event)) {
        event->accept();
    } else if (!isReadOnly() && isCommandKey(*event)) {
        event->ignore();
    } else {
        QPlainTextEdit::keyPressEvent(event);
    }
}

void TextArea::inputMethodEvent(QInputMethodEvent* event) {
    if (isReadOnly()) {
        event->ignore();  // Qt's own field would take it
    } else {
        compose(*event);
    }
}

void TextArea::mousePressEvent(QMouseEvent* event) {
    const int place = cursorForPosition(event->position().toPoint()).position();
    const bool inSelection = place >= selection().selStart && place < selection().selEnd;
    if (event->button() == Qt::LeftButton && !isReadOnly() && inSelection) {
        // A press inside the selection would begin a drag of it, whose end deletes text without a word to anybody.
        setSelection({place, place});
    }
    QPlainTextEdit::mousePressEvent(event);
}

void TextArea::dropEvent(QDropEvent* event) {
    QDragLeaveEvent leave;
    dragLeaveEvent(&leave);
    if (isReadOnly() || !canInsertFromMimeData(event->mimeData())) {
        event->ignore();
        return;
    }
    // Never a move: the source would delete its text although a handler may refuse it here.
    event->setDropAction(Qt::CopyAction);
    event->accept();
    setTextCursor(cursorForPosition(event->position().toPoint()));
    enter(event->mimeData()->text());
}

void TextArea::contextMenuEvent(QContextMenuEvent* event) {
    QMenu* menu = createStandardContextMenu(event->pos());
    if (!isReadOnly()) {
        announceEntries(*menu);
    }
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(event->globalPos());
}

bool TextArea::canInsertFromMimeData(const QMimeData* source) const {
    return source->hasText();
}

void TextArea::insertFromMimeData(const QMimeData* source) {
    enter(source->text());
}
