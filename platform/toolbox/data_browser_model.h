// The rows of a data browser as Qt's model of them: a row of ids. What a cell shows is asked each time.
#pragma once

#include "platform/toolbox/DataBrowser.h"

#include <QAbstractTableModel>
#include <QStringList>
#include <span>
#include <vector>

struct OpaqueDataBrowserItemDataRef {
    QString text;
};

class DataBrowserModel final : public QAbstractTableModel {
public:
    using Items = std::span<const DataBrowserItemID>;

    using QAbstractTableModel::QAbstractTableModel;

    void setColumns(std::vector<DataBrowserPropertyID> columns, QStringList titles);
    const std::vector<DataBrowserPropertyID>& columns() const { return columns_; }
    const std::vector<DataBrowserItemID>& items() const { return items_; }

    /// The row of an item, -1 when there is none.
    int rowOf(DataBrowserItemID item) const;
    /// The rows of those of the items that are here, ascending, each once.
    std::vector<int> rowsOf(Items items) const;

    /// Puts new items before a row.
    void insert(int row, Items items);
    /// Rows are ascending. Qt takes rows that lie together out of its own books. Group by group that can take seconds,
    /// so rows that lie apart go by a reset: false, and the selection and the place in the list are lost.
    bool remove(const std::vector<int>& rows);
    /// The same items in another order.
    void reorder(std::vector<DataBrowserItemID> items);
    /// Contents of these rows have changed.
    void changed(const std::vector<int>& rows);

    QString text(int row, int column) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    /// Who is asked for the contents, and by which name.
    ControlRef browser = nullptr;
    DataBrowserCallbacks callbacks{};

private:
    std::vector<DataBrowserPropertyID> columns_;
    QStringList titles_;
    std::vector<DataBrowserItemID> items_;
};
