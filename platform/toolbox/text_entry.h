// What typing, pasting, dropping and composing mean to a field: shared by the field of one line and the text area.
#pragma once

#include "platform/toolbox/objects.h"

#include <QClipboard>
#include <optional>

class QInputMethodEvent;
class QKeyEvent;
class QMenu;

/// What a user can do to a field's text besides entering some. On its way through the handlers an action is a text of
/// this one control character, so that a filter of characters lets it pass and still learns that the text will change.
enum class EditAction : char16_t {
    deleteForwardWord = 0x04,
    backspace = u'\b',
    deleteToLineEnd = 0x0B,
    deleteLine = 0x15,
    deleteBackwardWord = 0x17,
    cut = 0x18,
    redo = 0x19,
    undo = 0x1A,
    deleteForward = 0x7F,
};

/// A field that announces every change of its text by its user before it makes it. What the program sets is not
/// announced. Whoever derives from it sends the user's events here and the rest to Qt's own field.
class TextEntry : public TextSink {
public:
    void takeText(const QString& text) final;

protected:
    /// Announces an editing action.
    void enter(EditAction action) { announce(QString(QChar(static_cast<char16_t>(action)))); }
    /// Announces text from outside. Control characters, which would be taken for editing actions, are left out.
    void enter(const QString& text);
    void enterClipboard(QClipboard::Mode mode);
    /// Announces what the key stands for; false when it stands for neither text nor an editing action.
    bool enterKey(const QKeyEvent& key);
    /// True for a key that Qt's own field would type although the user held Alt, which means a command.
    static bool isCommandKey(const QKeyEvent& key);
    /// Announces what an input method commits, and shows what it is still composing.
    void compose(QInputMethodEvent& event);
    /// Makes the editing entries of Qt's standard context menu announce themselves.
    void announceEntries(QMenu& menu);

private:
    void announce(const QString& text);

    virtual QWidget* field() = 0;
    virtual bool hasLines() const = 0;
    virtual void insert(const QString& text) = 0;
    virtual void perform(EditAction action) = 0;
    /// Qt's own handling.
    virtual void showComposition(QInputMethodEvent& event) = 0;
};
