// The widget of a data browser: selection, order and keys are Qt's, told in the platform's words.
#pragma once

#include "platform/toolbox/data_browser_model.h"

#include <QTreeView>
#include <vector>

class DataBrowserView final : public QTreeView {
public:
    explicit DataBrowserView(QWidget* parent);

    /// The view of a control; null when it is no data browser.
    static DataBrowserView* of(ControlRef control);

    /// Takes over what the nib says about the columns.
    void readColumns();
    void setCallbacks(const DataBrowserCallbacks& callbacks);
    DataBrowserModel& rows() { return model_; }
    /// The section of a column; -1 when there is none.
    int sectionOf(DataBrowserPropertyID column) const;

    /// False when some of the items were there already.
    bool add(DataBrowserModel::Items items);
    void remove(const std::vector<int>& rows);
    /// Puts the rows in the order that the header shows.
    void sortRows();

    std::vector<int> selectedRows() const;
    void select(const std::vector<int>& rows, QItemSelectionModel::SelectionFlags how);

    /// A column of -1: only the row matters.
    void reveal(int row, int column, ScrollHint hint);
    void scrollToPoint(int left, int top);

    bool neverEmpty = false;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    void rowsAboutToBeRemoved(const QModelIndex& parent, int first, int last) override;
    void keyboardSearch(const QString& search) override;

private:
    void makeRoomForTitles(std::vector<int>* widths) const;
    using Ids = std::vector<DataBrowserItemID>;

    Ids idsOf(const QItemSelection& selection) const;
    QItemSelection selectionOf(const std::vector<int>& rows) const;
    bool isSorted() const;
    bool sortOnKey(const QKeyEvent& event);
    bool comesBefore(DataBrowserItemID one, DataBrowserItemID two) const;
    /// False when the browser is gone since.
    bool tell(const Ids& items, DataBrowserItemNotification message);
    void tellSelection(const Ids& deselected, const Ids& selected);

    DataBrowserModel model_;
    bool changing_ = false;  // changes of the selection are the program's, and told when they are complete
};
