// What a script does to fields, lists and windows.

#include "platform/toolbox/Automation.h"

#include "platform/toolbox/automation_input.h"
#include "platform/toolbox/objects.h"
#include "platform/toolbox/text_area.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QRegularExpression>
#include <QSet>
#include <algorithm>

namespace {

/// Kinds on which it matters where one clicks: their values are set, their items and rows picked.
bool hasParts(const OpaqueControlRef& control) {
    switch (control.kind) {
        case ControlKind::popUp:
        case ControlKind::radioGroup:
        case ControlKind::littleArrows:
        case ControlKind::slider:
        case ControlKind::tabs:
        case ControlKind::list:
            return true;
        case ControlKind::bevelButton:
            return control.menu && !control.menu->items.empty();
        default:
            return false;
    }
}

void typeCharacter(QWidget* field, char32_t character) {
    if (character == U'\n') {
        userPresses(field, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"));
        return;
    }
    if (character == U'\b') {
        userPresses(field, Qt::Key_Delete);
        return;
    }
    const char32_t upper = QChar::toUpper(character);
    const bool shifted = character == upper && upper != QChar::toLower(character);
    userPresses(field, static_cast<Qt::Key>(upper), shifted ? Qt::ShiftModifier : Qt::NoModifier,
                QString::fromUcs4(&character, 1));
}

/// Where the row is to be clicked; it is brought into view.
QPoint placeOfRow(QAbstractItemView* view, int row) {
    const QModelIndex index = view->model()->index(row, 0, view->rootIndex());
    view->scrollTo(index);
    return (view->visualRect(index) & view->viewport()->rect()).center();
}

bool clickRow(QAbstractItemView* view, int row, Qt::KeyboardModifiers modifiers) {
    return userClicks(view->viewport(), placeOfRow(view, row), modifiers);
}

QSet<int> selectedRows(const QAbstractItemView* view) {
    QSet<int> rows;
    for (const QModelIndex& index : view->selectionModel()->selectedIndexes()) {
        rows.insert(index.row());
    }
    return rows;
}

QAbstractItemView* listOf(ControlRef control) {
    auto* view = control ? qobject_cast<QAbstractItemView*>(control->widget) : nullptr;
    return view && view->model() ? view : nullptr;
}

/// The same, or the list that a pop-up without a menu opens.
const QAbstractItemView* listToReadOf(ControlRef control) {
    const auto* popUp = control && !control->menu ? qobject_cast<const QComboBox*>(control->widget) : nullptr;
    return popUp ? popUp->view() : listOf(control);
}

/// Whether text can be typed into it: of the fields of others we need to know no more than what they are.
bool isField(const OpaqueControlRef& control) {
    return control.origin == ControlOrigin::own
               ? dynamic_cast<TextSink*>(control.widget) != nullptr
               : control.kind == ControlKind::editText || control.kind == ControlKind::passwordText ||
                     qobject_cast<QAbstractSpinBox*>(control.widget) != nullptr;
}

OSStatus typeIntoField(QWidget* widget, const QString& text) {
    const QPointer<QWidget> field(widget);
    const bool lines = dynamic_cast<TextArea*>(widget);
    const bool typeable = std::ranges::all_of(
        text, [&](QChar c) { return c.category() != QChar::Other_Control || (lines && c == u'\n'); });
    if (!typeable) {
        return paramErr;
    }
    if (field->property("readOnly").toBool() || !userReaches(field) || !userFocuses(field)) {
        return kControlNotUsableErr;
    }
    // Deleted first, not typed over: filters count the text that is there.
    userPresses(field, Qt::Key_A, Qt::ControlModifier);
    userPresses(field, Qt::Key_Delete);
    for (const uint character : text.toUcs4()) {
        if (field) {
            typeCharacter(field, character);
        }
    }
    return noErr;
}

/// The sections into which so many numbers and words go: all, or those of the time of day alone; empty when neither.
QList<int> sectionsFor(const QDateTimeEdit& clock, qsizetype count) {
    QList<int> all;
    QList<int> ofTime;
    for (int section = 0; section < clock.sectionCount(); ++section) {
        all.append(section);
        if (QDateTimeEdit::TimeSections_Mask & clock.sectionAt(section)) {
            ofTime.append(section);
        }
    }
    return count == all.size() ? all : count == ofTime.size() ? ofTime : QList<int>();
}

/// Each number or word goes into one section of the clock, which is marked as the Tab key and the mouse do it.
OSStatus typeIntoClock(QDateTimeEdit* widget, const QString& text) {
    static const QRegularExpression notInSections(QStringLiteral("[^\\w]+"),
                                                  QRegularExpression::UseUnicodePropertiesOption);
    const QStringList parts = text.split(notInSections, Qt::SkipEmptyParts);
    const QPointer<QDateTimeEdit> clock(widget);
    const QList<int> sections = sectionsFor(*clock, parts.size());
    if (sections.isEmpty()) {
        return paramErr;
    }
    if (!userReaches(clock) || !userFocuses(clock)) {
        return kControlNotUsableErr;
    }
    for (int section = 0; section < parts.size() && clock; ++section) {
        clock->setSelectedSection(clock->sectionAt(sections[section]));
        for (const uint character : parts[section].toUcs4()) {
            if (clock) {
                typeCharacter(clock, character);
            }
        }
    }
    return noErr;
}

/// Keys for the list itself: letters search in it.
OSStatus typeIntoList(QAbstractItemView* view, const QString& text) {
    const QPointer<QWidget> list(view);
    if (!userReaches(list) || !userFocuses(list)) {
        return kControlNotUsableErr;
    }
    for (const uint character : text.toUcs4()) {
        if (list) {
            typeCharacter(list, character);
        }
    }
    return noErr;
}

}  // namespace

OSStatus AutomationClick(ControlRef control) {
    QAbstractItemView* list = listOf(control);
    if (!control || (hasParts(*control) && !list)) {
        return paramErr;
    }
    QWidget* widget = control->widget;
    if (!userReaches(widget)) {
        return kControlNotUsableErr;
    }
    if (list) {
        const QSet<int> selected = selectedRows(list);
        if (selected.size() != 1) {
            return paramErr;
        }
        const QPoint place = placeOfRow(list, *selected.begin());
        return userDoubleClicks(list->viewport(), place) ? noErr : kControlNotUsableErr;
    }
    return userClicks(widget) ? noErr : kControlNotUsableErr;
}

OSStatus AutomationType(ControlRef control, CFStringRef string) {
    if (!control || !string) {
        return paramErr;
    }
    const QString text = toQString(string);
    if (auto* clock = qobject_cast<QDateTimeEdit*>(control->widget)) {
        return typeIntoClock(clock, text);
    }
    if (QAbstractItemView* list = listOf(control)) {
        return typeIntoList(list, text);
    }
    return isField(*control) ? typeIntoField(control->widget, text) : paramErr;
}

OSStatus AutomationSelectRows(ControlRef control, ItemCount count, const UInt32* rows) {
    QAbstractItemView* view = listOf(control);
    if (!view || (count > 0 && !rows)) {
        return paramErr;
    }
    QSet<int> wanted;
    for (ItemCount i = 0; i < count; ++i) {
        if (rows[i] < 1 || rows[i] > static_cast<UInt32>(AutomationCountRows(control))) {
            return paramErr;
        }
        wanted.insert(static_cast<int>(rows[i]) - 1);
    }
    if (!userReaches(view)) {
        return kControlNotUsableErr;
    }
    const QPointer<QWidget> alive(view);
    const auto toggle = [&](const QSet<int>& changed) {
        return std::ranges::all_of(changed, [&](int row) { return alive && clickRow(view, row, Qt::ControlModifier); });
    };
    // A plain click first, which is all that a list of single choice understands.
    const bool reached = (wanted.isEmpty() || clickRow(view, *wanted.begin(), Qt::NoModifier)) && alive &&
                         toggle(selectedRows(view) - wanted) && alive && toggle(wanted - selectedRows(view));
    if (!reached) {
        return kControlNotUsableErr;
    }
    return selectedRows(view) == wanted ? noErr : paramErr;
}

CFIndex AutomationCountRows(ControlRef control) {
    const QAbstractItemView* view = listToReadOf(control);
    return view ? view->model()->rowCount(view->rootIndex()) : 0;
}

CFStringRef AutomationCopyCellText(ControlRef control, UInt32 row, UInt32 column) {
    const QAbstractItemView* view = listToReadOf(control);
    if (!view || row < 1 || column < 1) {
        return nullptr;
    }
    const QModelIndex cell =
        view->model()->index(static_cast<int>(row) - 1, static_cast<int>(column) - 1, view->rootIndex());
    return cell.isValid() ? toCFString(cell.data().toString()).leak() : nullptr;
}

Boolean AutomationIsRowSelected(ControlRef control, UInt32 row) {
    const QAbstractItemView* view = listOf(control);
    return view && selectedRows(view).contains(static_cast<int>(row) - 1);
}

OSStatus AutomationSnapshot(WindowRef window, CFURLRef file) {
    if (!window || !file) {
        return paramErr;
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    return window->widget->grab().save(toFilePath(file), "PNG") ? noErr : fnfErr;
}
