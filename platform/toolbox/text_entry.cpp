// From keys, clipboard and input method to announced text.

#include "platform/toolbox/text_entry.h"

#include <QAction>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMenu>
#include <algorithm>
#include <array>

namespace {

struct EditKey {
    QKeySequence::StandardKey key;
    EditAction action;
};

constexpr std::array kEditKeys{
    // key, action
    EditKey{QKeySequence::Undo, EditAction::undo},
    EditKey{QKeySequence::Redo, EditAction::redo},
    EditKey{QKeySequence::Cut, EditAction::cut},
    EditKey{QKeySequence::Backspace, EditAction::backspace},
    EditKey{QKeySequence::Delete, EditAction::deleteForward},
    EditKey{QKeySequence::DeleteStartOfWord, EditAction::deleteBackwardWord},
    EditKey{QKeySequence::DeleteEndOfWord, EditAction::deleteForwardWord},
    EditKey{QKeySequence::DeleteEndOfLine, EditAction::deleteToLineEnd},
    EditKey{QKeySequence::DeleteCompleteLine, EditAction::deleteLine},
};

std::optional<EditAction> actionOf(const QKeyEvent& key) {
    const auto row = std::ranges::find_if(kEditKeys, [&](const EditKey& k) { return key.matches(k.key); });
    if (row != kEditKeys.end()) {
        return row->action;
    }
    // Shift and Alt do not change what Backspace does.
    if (key.key() == Qt::Key_Backspace && !(key.modifiers() & Qt::ControlModifier)) {
        return EditAction::backspace;
    }
    return std::nullopt;
}

std::optional<EditAction> actionOf(const QString& text) {
    if (text.size() != 1) {
        return std::nullopt;
    }
    const auto action = static_cast<EditAction>(text.front().unicode());
    const bool known = std::ranges::find(kEditKeys, action, &EditKey::action) != kEditKeys.end();
    return known ? std::optional(action) : std::nullopt;
}

/// The same test that Qt's fields make.
bool hasCharacters(const QKeyEvent& key) {
    const QString text = key.text();
    if (text.isEmpty()) {
        return false;
    }
    const QChar first = text.front();
    return first.isPrint() || first.category() == QChar::Other_Format || first.category() == QChar::Other_PrivateUse ||
           (first.isHighSurrogate() && text.size() > 1 && text.at(1).isLowSurrogate());
}

bool isTyped(const QKeyEvent& key) {
    if (!hasCharacters(key)) {
        return false;
    }
    if (key.text().front().category() == QChar::Other_Format) {
        return true;  // some keyboards have joiners and direction marks on Ctrl+Shift
    }
    const auto commands = key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    return !commands || commands == (Qt::ControlModifier | Qt::AltModifier);  // both together are AltGr
}

QString withoutControls(QString text, bool keepLines) {
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    QString clean;
    clean.reserve(text.size());
    for (const QChar c : text) {
        const bool lineBreak = c == u'\n' || c == u'\r' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
        if (lineBreak) {
            clean += keepLines ? u'\n' : u' ';
        } else if (c == u'\t') {
            clean += keepLines ? u'\t' : u' ';
        } else if (c.category() != QChar::Other_Control) {
            clean += c;
        }
    }
    return clean;
}

}  // namespace

void TextEntry::takeText(const QString& text) {
    if (const auto action = actionOf(text)) {
        perform(*action);
    } else {
        insert(text);
    }
}

void TextEntry::announce(const QString& text) {
    if (OpaqueControlRef* control = OpaqueControlRef::of(field())) {
        control->userText(text);
    } else {
        takeText(text);
    }
}

void TextEntry::enter(const QString& text) {
    const QString clean = withoutControls(text, hasLines());
    if (!clean.isEmpty()) {
        announce(clean);
    }
}

void TextEntry::enterClipboard(QClipboard::Mode mode) {
    enter(QGuiApplication::clipboard()->text(mode));
}

bool TextEntry::enterKey(const QKeyEvent& key) {
    if (key.matches(QKeySequence::Paste)) {
        enterClipboard(QClipboard::Clipboard);
    } else if (const auto action = actionOf(key)) {
        enter(*action);
    } else if (hasLines() && (key.matches(QKeySequence::InsertParagraphSeparator) ||
                              key.matches(QKeySequence::InsertLineSeparator))) {
        enter(QStringLiteral("\n"));
    } else if (isTyped(key)) {
        enter(key.text());
    } else {
        return false;
    }
    return true;
}

bool TextEntry::isCommandKey(const QKeyEvent& key) {
    return hasCharacters(key) && !isTyped(key);
}

void TextEntry::compose(QInputMethodEvent& event) {
    const QPointer<QWidget> alive(field());
    const QString commit = withoutControls(event.commitString(), hasLines());
    const ControlEditTextSelectionRec before = selection();
    event.accept();
    if (commit.isEmpty() && event.replacementLength() == 0) {
        if (!event.preeditString().isEmpty() && before.selStart != before.selEnd) {
            // A composition begins in place of the selection, which Qt would delete by itself.
            enter(EditAction::deleteForward);
            if (!alive || selection().selStart != selection().selEnd) {
                return;
            }
        }
        showComposition(event);
        return;
    }

    QInputMethodEvent endOfComposition;
    showComposition(endOfComposition);
    ControlEditTextSelectionRec replaced = before;
    if (event.replacementLength() > 0) {
        replaced.selStart = before.selEnd + event.replacementStart();
        replaced.selEnd = replaced.selStart + event.replacementLength();
        setSelection(replaced);
    }
    if (commit.isEmpty()) {
        enter(EditAction::deleteForward);
    } else {
        announce(commit);
    }
    if (!alive) {
        return;
    }
    const bool refused = selection().selStart == replaced.selStart && selection().selEnd == replaced.selEnd;
    if (event.replacementLength() > 0 && refused) {
        setSelection(before);
    }
    if (!event.preeditString().isEmpty()) {
        QInputMethodEvent rest(event.preeditString(), event.attributes());
        showComposition(rest);
    }
}

void TextEntry::announceEntries(QMenu& menu) {
    // The entries have no names. Their order, lines apart, is: undo, redo, cut, copy, paste, delete, select all.
    constexpr std::array kActions{EditAction::undo, EditAction::redo, EditAction::cut};
    constexpr qsizetype kPaste = 4;
    constexpr qsizetype kDelete = 5;
    QList<QAction*> entries = menu.actions();
    entries.removeIf([](const QAction* entry) { return entry->isSeparator(); });
    const auto reroute = [&](qsizetype position, auto&& enterIt) {
        if (position < entries.size()) {
            QObject::disconnect(entries[position], &QAction::triggered, nullptr, nullptr);
            QObject::connect(entries[position], &QAction::triggered, field(), enterIt);
        }
    };
    for (qsizetype i = 0; i < std::ssize(kActions); ++i) {
        reroute(i, [this, action = kActions[i]] { enter(action); });
    }
    reroute(kPaste, [this] { enterClipboard(QClipboard::Clipboard); });
    reroute(kDelete, [this] { enter(EditAction::deleteForward); });
    for (qsizetype i = kDelete + 1; i < entries.size(); ++i) {
        if (entries[i]->menu()) {
            menu.removeAction(entries[i]);  // "insert control character" would put its text in by itself
        }
    }
}
