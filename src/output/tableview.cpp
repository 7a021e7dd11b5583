// SPDX-License-Identifier: MIT
#include "output/tableview.h"

#include "platform/controls/look.h"

#include <QApplication>
#include <QBrush>
#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QStyledItemDelegate>

#include <algorithm>
#include <limits>
#include <map>
#include <set>

namespace sixtrace {

namespace {

const int kRightAligned = Qt::AlignRight | Qt::AlignVCenter;
constexpr int kHeadHeight = 26;
constexpr int kFirstColumn = 72;
constexpr int kColumn = 106;

/// Paints the cells of the data table. Each holds one line of digits, so none of the layout is needed that the usual
/// delegate makes for texts of any kind, and that takes most of the time for a page of numbers. The usual delegate
/// still paints the selected cells and the one with the focus frame.
class NumberDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

void NumberDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    constexpr QStyle::State kPlain = QStyle::State_Enabled;
    constexpr QStyle::State kSpecial = QStyle::State_Selected | QStyle::State_HasFocus | QStyle::State_MouseOver;
    if (option.widget == nullptr || (option.state & (kPlain | kSpecial)) != kPlain) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    const QVariant ground = index.data(Qt::BackgroundRole);
    if (ground.isValid()) {
        painter->fillRect(option.rect, ground.value<QBrush>());
    }
    const QString text = index.data(Qt::DisplayRole).toString();
    if (text.isEmpty()) {
        return;
    }
    const QVariant ink = index.data(Qt::ForegroundRole);
    painter->setPen(ink.isValid() ? ink.value<QBrush>().color() : option.palette.color(QPalette::Text));
    painter->setFont(option.font);
    const int margin = option.widget->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, &option, option.widget) + 1;
    const QFontMetrics& metrics = option.fontMetrics;
    // The place has fractions of a pixel, as in the layout of the usual delegate.
    const double left = option.rect.right() + 1 - margin - QFontMetricsF(option.font).horizontalAdvance(text);
    const int top = option.rect.top() + (option.rect.height() - metrics.height()) / 2;
    painter->drawText(QPointF(left, top + metrics.ascent()), text);
}

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
        return kRightAligned;
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
    return role == Qt::TextAlignmentRole ? QVariant(kRightAligned) : QVariant();
}

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
    setItemDelegate(new NumberDelegate(this));
}

void TableView::setModel(QAbstractItemModel* model) {
    QTableView::setModel(model);
    hideColumn(0); // the row heads show it
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
            continue; // column 0, which the row heads show
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
