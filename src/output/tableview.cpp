// SPDX-License-Identifier: MIT
#include "output/tableview.h"

#include <limits>

namespace sixtrace {

void TableView::dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight, const QList<int>& roles) {
    const int first = rowAt(0);
    const int below = rowAt(viewport()->height() - 1); // -1 where the table ends above the lower edge
    const int last = below >= 0 ? below : std::numeric_limits<int>::max();
    if (isVisible() && first >= 0 && topLeft.row() <= last && bottomRight.row() >= first) {
        QTableView::dataChanged(topLeft, bottomRight, roles);
    }
}

} // namespace sixtrace
