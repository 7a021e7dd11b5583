// SPDX-License-Identifier: MIT
#pragma once

#include <QStyledItemDelegate>

namespace sixtrace {

/// Paints the cells of the data table: one line of digits each, right-aligned, so that none of the layout is needed
/// that the usual delegate does for texts of any kind and that takes most of the time of a page of numbers. Selected
/// cells and the one with the focus frame are the usual delegate's. The background of a row is the view's.
class NumberDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

} // namespace sixtrace
