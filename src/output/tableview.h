// SPDX-License-Identifier: MIT
#pragma once

#include <QTableView>

namespace sixtrace {

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
