// SPDX-License-Identifier: MIT
// The cells in the window of the data table: their view, their item model, and the copying of a selection.
#include "output/tablewindowfixture.h"
#include "support/strings.h"

#include <QAbstractItemModelTester>
#include <QClipboard>
#include <QHeaderView>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>

namespace sixtrace::test {
namespace {

TEST_F(DataTableWindow, AFullCaptureHas10231RowsAndTheItemModelKeepsItsPromises) {
    load();
    std::vector<CaptureBlock> blocks;
    for (const char id : {'1', '2', 'A', 'B', 'C', 'D'}) {
        blocks.push_back(block(id, 0.5F, ramp(kSampleRows, 3)));
    }
    open(blocks);
    const QAbstractItemModelTester tester(&cells(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    item("mnuTabular").trigger();
    fill();
    EXPECT_EQ(cells().rowCount(), 10231);
    EXPECT_EQ(shown(10231, 0), u"10231"_s);
    EXPECT_EQ(shown(10231, 6), u"15345"_s); // 10230 x 3 x 0.5
}

TEST_F(DataTableWindow, TheHeadRowAndTheSequenceColumnAreOfOneTableWithTheCells) {
    load();
    openAndFill({block('1', 1, {4})});
    const auto& view = part<QTableView>("MSFlexGrid1");
    EXPECT_FALSE(view.horizontalHeader()->isHidden());
    EXPECT_FALSE(view.verticalHeader()->isHidden());
    EXPECT_TRUE(view.isColumnHidden(0)) << "column 0 stands in the heads of the rows";
    EXPECT_FALSE(cells().flags(cells().index(0, 1)).testFlag(Qt::ItemIsEditable));
}

TEST_F(DataTableWindow, TheSequenceColumnStaysWhenTheOthersScrollAway) {
    load();
    openAndFill({block('1', 1, ramp(60, 1)), block('D', 1, ramp(60, 1))});
    item("mnuTabular").trigger();
    auto& view = part<QTableView>("MSFlexGrid1");
    view.horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
    view.setColumnWidth(2, 600);
    ASSERT_TRUE(QTest::qWaitFor([&view] { return view.horizontalScrollBar()->maximum() > 0; }, 60'000));
    view.horizontalScrollBar()->setValue(view.horizontalScrollBar()->maximum());
    ASSERT_LT(view.columnViewportPosition(1), 0) << "the first channel has gone";
    EXPECT_EQ(view.verticalHeader()->mapTo(&view, QPoint()).x(), view.contentsRect().left());
    EXPECT_EQ(view.verticalHeader()->width(), 72);
    EXPECT_EQ(view.horizontalHeader()->height(), 26);
    EXPECT_EQ(view.rowHeight(7), 22);
    EXPECT_FALSE(view.verticalHeader()->viewport()->visibleRegion().isEmpty());
    EXPECT_EQ(cells().headerData(0, Qt::Vertical, Qt::DisplayRole).toString(), u"1"_s);
    EXPECT_EQ(cells().headerData(59, Qt::Vertical, Qt::DisplayRole).toString(), u"60"_s);
}

TEST_F(DataTableWindow, TheFillTellsTheViewOfEveryRowOnceAndOfNoneBeforeItIsWritten) {
    load();
    open({block('1', 1, ramp(500, 1))});
    int next = -1;
    QObject::connect(&cells(), &QAbstractItemModel::modelReset, &cells(), [&next] { next = 40; });
    QObject::connect(&cells(), &QAbstractItemModel::dataChanged, &cells(),
                     [&](const QModelIndex& first, const QModelIndex& last) {
                         EXPECT_EQ(first.row(), next);
                         EXPECT_EQ(first.column(), 0);
                         EXPECT_EQ(last.column(), 6);
                         next = last.row() + 1;
                     });
    fill();
    EXPECT_EQ(next, 500) << "forty at once, the others as they come";
}

TEST_F(DataTableWindow, AWiderWindowGivesItsWidthToAllChannelsAlike) {
    load();
    openAndFill({block('1', 1, ramp(60, 1))});
    item("mnuTabular").trigger();
    const auto& view = part<QTableView>("MSFlexGrid1");
    for (const int width : {760, 1600}) {
        table()->resize(width, 700);
        QCoreApplication::sendPostedEvents();
        for (int col = 1; col <= 6; ++col) {
            EXPECT_NEAR(view.columnWidth(col), view.viewport()->width() / 6.0, 1) << col << " of " << width;
            EXPECT_GE(view.columnWidth(col), 106);
        }
        EXPECT_FALSE(view.horizontalScrollBar()->isVisible());
    }
}

TEST_F(DataTableWindow, CopyTakesTheWholeSelectionAsTabSeparatedText) {
    load();
    openAndFill({block('1', 1, {5, 6, 7}), block('2', 1, {8, 9})});
    item("mnuTabular").trigger();
    auto& view = part<QTableView>("MSFlexGrid1");
    const auto copied = [&view] {
        QApplication::clipboard()->setText(u"before"_s);
        QTest::keyClick(&view, Qt::Key_C, Qt::ControlModifier);
        return QApplication::clipboard()->text();
    };
    view.clearSelection();
    EXPECT_EQ(copied(), u"before"_s) << "nothing selected, nothing copied";
    auto* const selection = view.selectionModel();
    const QModelIndex first = cells().index(0, 1);
    selection->select(QItemSelection(first, cells().index(2, 2)), QItemSelectionModel::ClearAndSelect);
    EXPECT_EQ(copied(), u"5\t8\n6\t9\n7\t"_s);
    selection->select(first, QItemSelectionModel::ClearAndSelect);
    selection->select(cells().index(2, 2), QItemSelectionModel::Select);
    selection->select(cells().index(1, 2), QItemSelectionModel::Select);
    EXPECT_EQ(copied(), u"5\t\n\t9\n\t"_s);
    view.selectAll();
    EXPECT_EQ(copied(), u"5\t8\t\t\t\t\n6\t9\t\t\t\t\n7\t\t\t\t\t"_s) << "the values, not the heads";
}

TEST_F(DataTableWindow, TheHeadTellsThatTheProbeFactorIsNotInTheValues) {
    installLanguages();
    load();
    const auto tip = [this] { return cells().headerData(3, Qt::Horizontal, Qt::ToolTipRole).toString(); };
    openAndFill({block('1', 1, {5})});
    EXPECT_EQ(tip(), u"数值为仪器输入端的电压，未乘以探头系数。"_s);
    item("mnuEnglish").trigger();
    openAndFill({block('1', 1, {5})});
    EXPECT_EQ(tip(), u"Values are voltages at the instrument's input, without the probe factor."_s);
}

TEST_F(DataTableWindow, CellsLookAsTheUsualDelegateOfTheDesktopPaintsThem) {
    load();
    openAndFill({block('1', 0.5F, {1234, -77, 0, 2047})});
    auto& view = part<QTableView>("MSFlexGrid1");
    const QStyledItemDelegate usual;
    for (const QModelIndex& cell : {cells().index(0, 0), cells().index(0, 1), cells().index(1, 1), cells().index(2, 1),
                                    cells().index(3, 1), cells().index(1, 2)}) {
        const auto painted = [&](const QAbstractItemDelegate& delegate) {
            QImage image(110, 22, QImage::Format_RGB32);
            image.fill(Qt::white);
            QPainter painter(&image);
            QStyleOptionViewItem option;
            option.initFrom(&view);
            option.widget = &view;
            option.font = view.font();
            option.fontMetrics = QFontMetrics(view.font());
            option.state = QStyle::State_Enabled | QStyle::State_Active;
            option.rect = image.rect();
            delegate.paint(&painter, option, cell);
            return image;
        };
        EXPECT_EQ(painted(*view.itemDelegate()), painted(usual)) << cell.row() << ' ' << cell.column();
    }
}

} // namespace
} // namespace sixtrace::test
