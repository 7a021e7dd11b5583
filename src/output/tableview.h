// SPDX-License-Identifier: MIT
#pragma once

#include <QTableView>

namespace sixtrace {

/// The view of the data table. It paints itself anew only for changes of rows that it shows: the usual one does so for
/// every change, so that a fill in the background would paint the same page over and over.
class TableView : public QTableView {
public:
    explicit TableView(QWidget* parent)
        : QTableView(parent) {}

protected:
    void dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight, const QList<int>& roles) override;
};

} // namespace sixtrace
