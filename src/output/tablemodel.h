// SPDX-License-Identifier: MIT
#pragma once

#include "output/tablecells.h"

#include <QAbstractTableModel>

namespace sixtrace {

/// Shows the cells of the data table to a view: row 0 of the table is the horizontal header, row r the item row r - 1,
/// whose head is its cell of column 0.
/// It owns nothing; who writes the cells tells it what has changed.
class TableModel : public QAbstractTableModel {
public:
    TableModel(const TableCells& cells, QObject* parent)
        : QAbstractTableModel(parent)
        , m_cells(cells) {}

    /// What the heads of the columns tell when asked.
    void setHeadTip(const QString& text) { m_headTip = text; }
    /// Around a change of the count of rows.
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

} // namespace sixtrace
