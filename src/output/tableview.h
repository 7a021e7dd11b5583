// SPDX-License-Identifier: MIT
#pragma once

#include <QTableView>

namespace sixtrace {

/// The view of the data table. Column 0, the sequence numbers, stands fixed at the left as the heads of the rows. The
/// other columns share the width that is there. It paints itself anew only for changes of rows that it shows: the usual
/// one does so for every change, so that a fill in the background would paint the same page over and over. Ctrl+C
/// copies the selected cells.
class TableView : public QTableView {
public:
    static constexpr int kRowHeight = 22;

    explicit TableView(QWidget* parent);

    void setModel(QAbstractItemModel* model) override;
    /// The selected cells, columns parted by tabs, lines by line feeds. A cell within these columns that is not
    /// selected is empty.
    [[nodiscard]] QString selectedText() const;

protected:
    void dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight, const QList<int>& roles) override;
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace sixtrace
