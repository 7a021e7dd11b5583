// SPDX-License-Identifier: MIT
#pragma once

#include "output/tablecells.h"

#include <QAbstractTableModel>
#include <QTableView>

namespace sixtrace {

/// The cells of the data table as a model for a view. Row 0 of the table is the horizontal header. Row r is the item
/// row r - 1, and its cell of column 0 is the head of that row. The model owns no cells; whoever writes cells has to
/// tell it which rows have changed.
class TableModel : public QAbstractTableModel {
public:
    TableModel(const TableCells& cells, QObject* parent)
        : QAbstractTableModel(parent)
        , m_cells(cells) {}

    /// Sets the tool tip of the column heads.
    void setHeadTip(const QString& text) { m_headTip = text; }
    /// To be called before and after a change of the count of rows.
    void beginRows() { beginResetModel(); }
    void endRows() { endResetModel(); }
    /// The table's rows `first` to `last` have been written.
    void rowsWritten(int first, int last);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    const TableCells& m_cells;
    QString m_headTip;
};

/// The view of the data table. The sequence numbers of column 0 are shown as row heads, which stay at the left when the
/// table is scrolled; the other columns share the width. The view repaints only when rows that it shows have changed:
/// the usual view repaints for each change, so that a fill in the background would paint the same page many times.
/// Ctrl+C copies the selected cells.
class TableView : public QTableView {
public:
    static constexpr int kRowHeight = 22;

    explicit TableView(QWidget* parent);

    void setModel(QAbstractItemModel* model) override;
    /// The selected cells, with tabs between columns and line feeds between lines. A cell that lies between selected
    /// columns but is not selected itself is empty.
    [[nodiscard]] QString selectedText() const;

protected:
    void dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight, const QList<int>& roles) override;
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace sixtrace
