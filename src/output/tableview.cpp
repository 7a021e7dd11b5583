// SPDX-License-Identifier: MIT
#include "output/tableview.h"

#include "platform/controls/look.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>

#include <limits>
#include <map>
#include <set>

namespace sixtrace {

namespace {
constexpr int kHeadHeight = 26;
constexpr int kFirstColumn = 72;
constexpr int kColumn = 106;
} // namespace

TableView::TableView(QWidget* parent)
    : QTableView(parent) {
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setMinimumSectionSize(kRowHeight);
    verticalHeader()->setDefaultSectionSize(kRowHeight);
    verticalHeader()->setFixedWidth(kFirstColumn);
    verticalHeader()->setHighlightSections(false);
    horizontalHeader()->setFixedHeight(kHeadHeight);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setMinimumSectionSize(kColumn);
    setAlternatingRowColors(true);
    setWordWrap(false);
    setTabKeyNavigation(false);
    QPalette pale = palette();
    pale.setColor(QPalette::Highlight, QColor::fromRgb(bench::kSelectedRow));
    pale.setColor(QPalette::HighlightedText, QColor::fromRgb(bench::kInk));
    setPalette(pale);
}

void TableView::setModel(QAbstractItemModel* model) {
    QTableView::setModel(model);
    hideColumn(0); // it stands in the heads of the rows
    horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
}

void TableView::dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight, const QList<int>& roles) {
    const int first = rowAt(0);
    const int below = rowAt(viewport()->height() - 1); // -1 where the table ends above the lower edge
    const int last = below >= 0 ? below : std::numeric_limits<int>::max();
    if (isVisible() && first >= 0 && topLeft.row() <= last && bottomRight.row() >= first) {
        QTableView::dataChanged(topLeft, bottomRight, roles);
        verticalHeader()->viewport()->update();
    }
}

QString TableView::selectedText() const {
    std::map<int, std::set<int>> columnsOfRow;
    std::set<int> columns;
    const QModelIndexList cells = selectedIndexes();
    for (const QModelIndex& cell : cells) {
        if (isColumnHidden(cell.column())) {
            continue; // the heads of the rows
        }
        columnsOfRow[cell.row()].insert(cell.column());
        columns.insert(cell.column());
    }
    QStringList lines;
    for (const auto& [row, selected] : columnsOfRow) {
        QStringList line;
        for (int column = *columns.begin(); column <= *columns.rbegin(); ++column) {
            const bool isSelected = selected.count(column) > 0;
            line.append(isSelected ? model()->index(row, column).data().toString() : QString());
        }
        lines.append(line.join(u'\t'));
    }
    return lines.join(u'\n');
}

void TableView::keyPressEvent(QKeyEvent* event) {
    if (!event->matches(QKeySequence::Copy)) {
        QTableView::keyPressEvent(event);
        return;
    }
    if (selectionModel()->hasSelection()) {
        QApplication::clipboard()->setText(selectedText());
    }
}

} // namespace sixtrace
