#include "platform/toolbox/data_browser_view.h"

#include "platform/toolbox/objects.h"
#include "platform/toolbox/return_key.h"

#include <QHeaderView>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QSet>
#include <algorithm>
#include <iterator>

namespace {

constexpr int kCodeLength = 4;

/// Codes of four characters with one blank between them; a blank may also be part of a code.
std::vector<DataBrowserPropertyID> columnsIn(const QByteArray& text) {
    std::vector<DataBrowserPropertyID> columns;
    for (qsizetype i = 0; i + kCodeLength <= text.size(); i += kCodeLength + 1) {
        DataBrowserPropertyID column = 0;
        for (const char c : text.mid(i, kCodeLength)) {
            column = (column << 8) | static_cast<unsigned char>(c);
        }
        columns.push_back(column);
    }
    return columns;
}

/// Ascending, each once.
std::vector<int> rowsIn(const QItemSelection& selection) {
    std::vector<int> rows;
    for (const QItemSelectionRange& range : selection) {
        for (int row = range.top(); row <= range.bottom(); ++row) {
            rows.push_back(row);
        }
    }
    std::ranges::sort(rows);
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

/// What handlers read of a key: its text, and for the delete keys the same on every keyboard.
QString textOf(const QKeyEvent& key) {
    switch (key.key()) {
        case Qt::Key_Backspace:
            return QString(QChar(kBackspaceCharCode));
        case Qt::Key_Delete:
            return QString(QChar(kDeleteCharCode));
        default:
            return key.text();
    }
}

}  // namespace

DataBrowserView::DataBrowserView(QWidget* parent) : QTreeView(parent) {
    setModel(&model_);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setExpandsOnDoubleClick(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setAlternatingRowColors(true);
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    header()->setSortIndicator(-1, Qt::AscendingOrder);
    connect(header(), &QHeaderView::sortIndicatorChanged, this, [this] { sortRows(); });
}

DataBrowserView* DataBrowserView::of(ControlRef control) {
    return control != nullptr ? dynamic_cast<DataBrowserView*>(control->widget) : nullptr;
}

// ---- Columns and order

void DataBrowserView::readColumns() {
    const QStringList titles = property("headers").toStringList();
    setHeaderHidden(titles.isEmpty());
    model_.setColumns(columnsIn(property("columns").toString().toLatin1()), titles);
    const QStringList texts = property("widths").toString().split(u' ', Qt::SkipEmptyParts);
    std::vector<int> widths;
    std::ranges::transform(texts.first(std::min<qsizetype>(texts.size(), header()->count())),
                           std::back_inserter(widths), [](const QString& text) { return text.toInt(); });
    makeRoomForTitles(&widths);
    for (int section = 0; section < static_cast<int>(widths.size()); ++section) {
        header()->resizeSection(section, widths[static_cast<std::size_t>(section)]);
    }
}

/// What a title needs beyond its column's width is taken from the other columns, in proportion to what they have beyond
/// theirs.
void DataBrowserView::makeRoomForTitles(std::vector<int>* widths) const {
    std::vector<int> room;
    int missing = 0;
    int spare = 0;
    for (int& width : *widths) {
        room.push_back(width - header()->sectionSizeHint(static_cast<int>(room.size())));
        if (room.back() < 0) {
            width -= room.back();
            missing -= room.back();
        } else {
            spare += room.back();
        }
    }
    if (spare == 0) {
        return;
    }
    for (std::size_t i = 0; i < room.size(); ++i) {
        (*widths)[i] -= std::max(room[i], 0) * std::min(missing, spare) / spare;
    }
}

void DataBrowserView::setCallbacks(const DataBrowserCallbacks& callbacks) {
    model_.browser = OpaqueControlRef::of(this);
    model_.callbacks = callbacks;
    const bool sortable = callbacks.u.v1.itemCompareCallback != nullptr;
    header()->setSectionsClickable(sortable);
    header()->setSortIndicatorShown(sortable);
    viewport()->update();
}

int DataBrowserView::sectionOf(DataBrowserPropertyID column) const {
    const auto found = std::ranges::find(model_.columns(), column);
    return found != model_.columns().end() ? static_cast<int>(found - model_.columns().begin()) : -1;
}

bool DataBrowserView::isSorted() const {
    return model_.callbacks.u.v1.itemCompareCallback != nullptr && header()->sortIndicatorSection() >= 0 &&
           header()->sortIndicatorSection() < model_.columnCount();
}

bool DataBrowserView::comesBefore(DataBrowserItemID one, DataBrowserItemID two) const {
    if (header()->sortIndicatorOrder() == Qt::DescendingOrder) {
        std::swap(one, two);
    }
    const auto section = static_cast<std::size_t>(header()->sortIndicatorSection());
    return model_.callbacks.u.v1.itemCompareCallback(model_.browser, one, two, model_.columns()[section]);
}

void DataBrowserView::sortRows() {
    if (isSorted()) {
        Ids sorted = model_.items();
        std::ranges::stable_sort(sorted, [this](auto one, auto two) { return comesBefore(one, two); });
        model_.reorder(std::move(sorted));
    }
}

// ---- Rows

bool DataBrowserView::add(DataBrowserModel::Items items) {
    Ids fresh(items.begin(), items.end());
    if (fresh.size() == 1) {
        if (model_.rowOf(fresh.front()) >= 0) {
            fresh.clear();
        }
    } else {
        QSet<DataBrowserItemID> known(model_.items().begin(), model_.items().end());
        std::erase_if(fresh, [&known](DataBrowserItemID item) {
            const auto before = known.size();
            known.insert(item);
            return known.size() == before;
        });
    }
    if (fresh.empty()) {
        return items.empty();
    }
    if (fresh.size() == 1 && isSorted()) {
        const Ids& there = model_.items();
        const auto place = std::ranges::upper_bound(there, fresh.front(),
                                                    [this](auto one, auto two) { return comesBefore(one, two); });
        model_.insert(static_cast<int>(place - there.begin()), fresh);
    } else {
        model_.insert(model_.rowCount(), fresh);
        sortRows();
    }
    tell(fresh, kDataBrowserItemAdded);
    return fresh.size() == items.size();
}

void DataBrowserView::remove(const std::vector<int>& rows) {
    Ids removed;
    Ids deselected;
    const std::vector<int> selected = selectedRows();
    for (const int row : rows) {
        removed.push_back(model_.items()[static_cast<std::size_t>(row)]);
        if (std::ranges::binary_search(selected, row)) {
            deselected.push_back(removed.back());
        }
    }
    {
        const QScopedValueRollback quiet(changing_, true);
        const Ids before = idsOf(selectionModel()->selection());
        const QPoint scrolled(horizontalScrollBar()->value(), verticalScrollBar()->value());
        if (!model_.remove(rows)) {
            selectionModel()->select(selectionOf(model_.rowsOf(before)), QItemSelectionModel::Select);
            scrollToPoint(scrolled.x(), scrolled.y());
        }
    }
    const QPointer<QWidget> alive(this);
    if (!deselected.empty()) {
        tellSelection(deselected, {});
    }
    if (alive) {
        tell(removed, kDataBrowserItemRemoved);
    }
}

void DataBrowserView::rowsAboutToBeRemoved(const QModelIndex& parent, int first, int last) {
    // The focus goes to the next row, without selecting it: Qt would do that in a list of single choice.
    const int current = currentIndex().row();
    if (current >= first && current <= last) {
        const int next = last + 1 < model_.rowCount() ? last + 1 : first - 1;
        selectionModel()->setCurrentIndex(model_.index(next, 0), QItemSelectionModel::NoUpdate);
    }
    QTreeView::rowsAboutToBeRemoved(parent, first, last);
}

// ---- Selection

std::vector<int> DataBrowserView::selectedRows() const {
    return rowsIn(selectionModel()->selection());
}

QItemSelection DataBrowserView::selectionOf(const std::vector<int>& rows) const {
    QItemSelection selection;
    const int lastColumn = model_.columnCount() - 1;
    for (auto row = rows.begin(); row != rows.end();) {
        const int first = *row;
        int last = first;
        for (++row; row != rows.end() && *row == last + 1; ++row) {
            ++last;
        }
        selection.append(QItemSelectionRange(model_.index(first, 0), model_.index(last, lastColumn)));
    }
    return selection;
}

void DataBrowserView::select(const std::vector<int>& rows, QItemSelectionModel::SelectionFlags how) {
    const Ids before = idsOf(selectionModel()->selection());
    {
        const QScopedValueRollback quiet(changing_, true);
        selectionModel()->select(selectionOf(rows), how);
        if (!rows.empty()) {
            selectionModel()->setCurrentIndex(model_.index(rows.front(), 0), QItemSelectionModel::NoUpdate);
        }
    }
    const Ids after = idsOf(selectionModel()->selection());
    const auto without = [](const Ids& all, const Ids& others) {
        const QSet<DataBrowserItemID> known(others.begin(), others.end());
        Ids rest;
        std::ranges::copy_if(all, std::back_inserter(rest), [&](auto item) { return !known.contains(item); });
        return rest;
    };
    tellSelection(without(before, after), without(after, before));
}

DataBrowserView::Ids DataBrowserView::idsOf(const QItemSelection& selection) const {
    Ids items;
    for (const int row : rowsIn(selection)) {
        items.push_back(model_.items()[static_cast<std::size_t>(row)]);
    }
    return items;
}

void DataBrowserView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QTreeView::selectionChanged(selected, deselected);
    if (changing_) {
        return;
    }
    Ids gone = idsOf(deselected);
    if (neverEmpty && !gone.empty() && selectionModel()->selection().isEmpty()) {
        const QScopedValueRollback quiet(changing_, true);
        selectionModel()->select(model_.index(model_.rowOf(gone.back()), 0),
                                 QItemSelectionModel::Select | QItemSelectionModel::Rows);
        gone.pop_back();
    }
    tellSelection(gone, idsOf(selected));
}

// ---- Notifications

bool DataBrowserView::tell(const Ids& items, DataBrowserItemNotification message) {
    const DispatchScope dispatching;
    const QPointer<OpaqueControlRef> browser(model_.browser);
    // One that is disposed of here leaves its window at once and is deleted later.
    const auto isThere = [&browser] { return GetControlOwner(browser) != nullptr; };
    for (const DataBrowserItemID item : items) {
        const auto told = isThere() ? model_.callbacks.u.v1.itemNotificationCallback : nullptr;
        if (told == nullptr) {
            break;
        }
        told(browser, item, message);
    }
    return isThere();
}

void DataBrowserView::tellSelection(const Ids& deselected, const Ids& selected) {
    const DispatchScope dispatching;
    if ((!deselected.empty() || !selected.empty()) && tell(deselected, kDataBrowserItemDeselected) &&
        tell(selected, kDataBrowserItemSelected)) {
        tell({kDataBrowserNoItem}, kDataBrowserSelectionSetChanged);
    }
}

// ---- Mouse and keys

void DataBrowserView::mouseDoubleClickEvent(QMouseEvent* event) {
    const DispatchScope dispatching;
    const QPointer<QWidget> alive(this);
    QTreeView::mouseDoubleClickEvent(event);
    const QModelIndex index = indexAt(event->position().toPoint());
    if (alive && event->button() == Qt::LeftButton && index.isValid()) {
        tell({model_.items()[static_cast<std::size_t>(index.row())]}, kDataBrowserItemDoubleClicked);
    }
}

void DataBrowserView::keyPressEvent(QKeyEvent* event) {
    const DispatchScope dispatching;
    if (OpaqueControlRef* control = OpaqueControlRef::of(this)) {
        const OSStatus status = ScopedEvent(kEventClassKeyboard, kEventRawKeyDown)
                                    .with(kEventParamDirectObject, typeControlRef, ControlRef(control))
                                    .withText(kEventParamKeyUnicodes, textOf(*event))
                                    .sendTo(control);
        if (status != eventNotHandledErr) {
            event->accept();
            return;
        }
    }
    if (sortOnKey(*event)) {
        event->accept();
        return;
    }
    const std::vector<int> selected = selectedRows();
    if (isReturn(*event) && selected.size() == 1) {
        event->accept();
        tell({model_.items()[static_cast<std::size_t>(selected.front())]}, kDataBrowserItemDoubleClicked);
        return;
    }
    QTreeView::keyPressEvent(event);
}

/// Titles take no focus, so that the list is one stop of the Tab key.
bool DataBrowserView::sortOnKey(const QKeyEvent& event) {
    const int section = event.key() - Qt::Key_1;
    const bool isControl = (event.modifiers() & ~Qt::KeypadModifier) == Qt::ControlModifier;
    if (!isControl || section < 0 || section >= std::min(model_.columnCount(), 9) || !header()->sectionsClickable()) {
        return false;
    }
    const bool isTurned =
        header()->sortIndicatorSection() == section && header()->sortIndicatorOrder() == Qt::AscendingOrder;
    header()->setSortIndicator(section, isTurned ? Qt::DescendingOrder : Qt::AscendingOrder);
    return true;
}

void DataBrowserView::keyboardSearch(const QString& search) {
    // Qt searches in the column that was clicked last.
    const int column = isSorted() ? header()->sortIndicatorSection() : 0;
    const QModelIndex current = currentIndex();
    if (current.isValid() && current.column() != column) {
        selectionModel()->setCurrentIndex(current.siblingAtColumn(column), QItemSelectionModel::NoUpdate);
    }
    QTreeView::keyboardSearch(search);
}

void DataBrowserView::reveal(int row, int column, ScrollHint hint) {
    const int left = horizontalScrollBar()->value();
    scrollTo(model_.index(row, std::max(column, 0)), hint);
    if (column < 0) {
        horizontalScrollBar()->setValue(left);
    }
}

void DataBrowserView::scrollToPoint(int left, int top) {
    executeDelayedItemsLayout();
    horizontalScrollBar()->setValue(left);
    verticalScrollBar()->setValue(top);
}
