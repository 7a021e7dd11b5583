// SPDX-License-Identifier: MIT
#include "output/tablemodel.h"

#include "platform/controls/look.h"

#include <QBrush>

#include <algorithm>

namespace sixtrace {

namespace {

const int kRight = Qt::AlignRight | Qt::AlignVCenter;

} // namespace

void TableModel::rowsWritten(int first, int last) {
    Q_EMIT dataChanged(index(first - 1, 0), index(last - 1, TableCells::kCols - 1), {Qt::DisplayRole});
}

int TableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : std::max(m_cells.Rows() - 1, 0);
}

int TableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : TableCells::kCols;
}

QVariant TableModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
        return m_cells.TextMatrix(index.row() + 1, index.column());
    case Qt::TextAlignmentRole:
        return kRight;
    case Qt::ForegroundRole:
        return index.column() == 0 ? QVariant(QBrush(QColor::fromRgb(bench::kMuted))) : QVariant();
    case Qt::BackgroundRole:
        return index.column() == 0 ? QVariant(QBrush(QColor::fromRgb(bench::kWindow))) : QVariant();
    default:
        return {};
    }
}

QVariant TableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Vertical) {
        return data(index(section, 0), role);
    }
    if (section < 0 || section >= TableCells::kCols) {
        return {};
    }
    if (role == Qt::ToolTipRole) {
        return m_headTip;
    }
    if (role == Qt::DisplayRole) {
        return m_cells.TextMatrix(0, section);
    }
    return role == Qt::TextAlignmentRole ? QVariant(kRight) : QVariant();
}

} // namespace sixtrace
