#include "platform/toolbox/data_browser_model.h"

#include <QHash>
#include <QSet>
#include <algorithm>

void DataBrowserModel::setColumns(std::vector<DataBrowserPropertyID> columns, QStringList titles) {
    beginResetModel();
    columns_ = std::move(columns);
    titles_ = std::move(titles);
    endResetModel();
}

int DataBrowserModel::rowOf(DataBrowserItemID item) const {
    const auto found = std::ranges::find(items_, item);
    return found != items_.end() ? static_cast<int>(found - items_.begin()) : -1;
}

std::vector<int> DataBrowserModel::rowsOf(Items items) const {
    std::vector<int> rows;
    if (items.size() == 1) {
        if (const int row = rowOf(items.front()); row >= 0) {
            rows.push_back(row);
        }
        return rows;
    }
    const QSet<DataBrowserItemID> wanted(items.begin(), items.end());
    for (int row = 0; row < rowCount(); ++row) {
        if (wanted.contains(items_[static_cast<std::size_t>(row)])) {
            rows.push_back(row);
        }
    }
    return rows;
}

void DataBrowserModel::insert(int row, Items items) {
    beginInsertRows({}, row, row + static_cast<int>(items.size()) - 1);
    items_.insert(items_.begin() + row, items.begin(), items.end());
    endInsertRows();
}

bool DataBrowserModel::remove(const std::vector<int>& rows) {
    if (rows.empty()) {
        return true;
    }
    const int first = rows.front();
    const int last = rows.back();
    if (last - first + 1 == std::ssize(rows)) {
        beginRemoveRows({}, first, last);
        items_.erase(items_.begin() + first, items_.begin() + last + 1);
        endRemoveRows();
        return true;
    }
    beginResetModel();
    auto next = rows.begin();
    int row = 0;
    std::erase_if(items_, [&](DataBrowserItemID) {
        const bool goes = next != rows.end() && *next == row++;
        next += goes ? 1 : 0;
        return goes;
    });
    endResetModel();
    return false;
}

void DataBrowserModel::reorder(std::vector<DataBrowserItemID> items) {
    if (items == items_) {
        return;
    }
    layoutAboutToBeChanged({}, VerticalSortHint);
    QHash<DataBrowserItemID, int> newRows;
    newRows.reserve(static_cast<qsizetype>(items.size()));
    for (int row = 0; row < rowCount(); ++row) {
        newRows.insert(items[static_cast<std::size_t>(row)], row);
    }
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    after.reserve(before.size());
    for (const QModelIndex& index : before) {
        after.append(createIndex(newRows.value(items_[static_cast<std::size_t>(index.row())]), index.column()));
    }
    items_ = std::move(items);
    changePersistentIndexList(before, after);
    layoutChanged({}, VerticalSortHint);
}

void DataBrowserModel::changed(const std::vector<int>& rows) {
    if (!rows.empty() && !columns_.empty()) {
        dataChanged(index(rows.front(), 0), index(rows.back(), columnCount() - 1));
    }
}

QString DataBrowserModel::text(int row, int column) const {
    OpaqueDataBrowserItemDataRef content;
    const auto ask = callbacks.u.v1.itemDataCallback;
    const bool answered = ask != nullptr && ask(browser, items_[static_cast<std::size_t>(row)],
                                                columns_[static_cast<std::size_t>(column)], &content, false) == noErr;
    return answered ? content.text : QString();
}

int DataBrowserModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(items_.size());
}

int DataBrowserModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant DataBrowserModel::data(const QModelIndex& index, int role) const {
    return index.isValid() && role == Qt::DisplayRole ? text(index.row(), index.column()) : QVariant();
}

QVariant DataBrowserModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole) {
        return titles_.value(section);
    }
    return {};
}
