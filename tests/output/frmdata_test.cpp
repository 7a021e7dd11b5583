// SPDX-License-Identifier: MIT
#include "output/tablewindowfixture.h"
#include "platform/controls/toolbar.h"
#include "support/strings.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QPointer>
#include <QScreen>
#include <QSignalSpy>
#include <QTimer>

namespace sixtrace::test {
namespace {

TEST_F(DataTableWindow, ChannelsOfDifferentLengthsEndInEmptyCellsAndTheSequenceRunsToTheLongest) {
    load();
    openAndFill({block('1', 1, ramp(100, 1)), block('2', 2, ramp(45, 1)), block('A', 1, ramp(7, 1))});
    EXPECT_EQ(table()->MSFlexGrid1().Rows(), 101);
    EXPECT_EQ(cells().rowCount(), 100);
    EXPECT_EQ(cells().columnCount(), 7);
    for (int row = 1; row <= 100; ++row) {
        EXPECT_EQ(shown(row, 0), QString::number(row));
        EXPECT_EQ(shown(row, 1), QString::number(row - 1));
        EXPECT_EQ(shown(row, 2), row <= 45 ? QString::number(2 * (row - 1)) : QString());
        EXPECT_EQ(shown(row, 3), row <= 7 ? QString::number(row - 1) : QString());
        EXPECT_EQ(shown(row, 4), QString());
    }
}

TEST_F(DataTableWindow, AnAbsentChannelKeepsItsHeadTextButAllItsCellsStayEmpty) {
    load();
    openAndFill({block('1', 1, ramp(50, 1)), block('B', 1, ramp(50, 1))});
    for (const int absent : {2, 3, 5, 6}) {
        EXPECT_FALSE(shown(0, absent).isEmpty());
        for (int row = 1; row <= 50; ++row) {
            EXPECT_EQ(shown(row, absent), QString());
        }
    }
    EXPECT_EQ(shown(0, 3), u"A / 1"_s);
    EXPECT_EQ(shown(50, 4), u"49"_s);
}

TEST_F(DataTableWindow, ACaptureOf40SamplesOrFewerIsFilledInOneGoAndALongerOneRowByRow) {
    load();
    for (const auto& [samples, atOnce] : {std::pair(39, true), {40, true}, {41, false}}) {
        open({block('1', 1, ramp(samples, 1))});
        bool filledAtOnce = false;
        QObject::connect(&cells(), &QAbstractItemModel::modelReset, &cells(),
                         [&] { filledAtOnce = table()->isFilled(); });
        EXPECT_FALSE(table()->isFilled()) << "the load returns first";
        fill();
        EXPECT_EQ(filledAtOnce, atOnce) << samples;
        EXPECT_EQ(shown(samples, 1), QString::number(samples - 1));
    }
}

TEST_F(DataTableWindow, ProbeExp1GivesAHeadWith10AndAValueSuchAs12_5StaysAsItIs) {
    load();
    openAndFill({block('1', 12.5F, {1, -1}, 1), block('2', 1, {1}, 2)});
    EXPECT_EQ(shown(0, 1), u"ch1 / 10"_s);
    EXPECT_EQ(shown(0, 2), u"ch2 / 100"_s);
    EXPECT_EQ(shown(1, 1), marked("12.5"));
    EXPECT_EQ(shown(2, 1), marked("-12.5"));
}

TEST_F(DataTableWindow, TheHeadOfAChannelThatTheFileLacksShowsFactor1AndBeforeAnyLoad10) {
    load();
    item("mnuTabular").trigger();
    fill();
    const std::array names{"ch1", "ch2", "A", "B", "C", "D"};
    EXPECT_EQ(shown(0, 0), QString());
    for (int col = 1; col <= 6; ++col) {
        EXPECT_EQ(shown(0, col), QString::fromUtf8(names.at(static_cast<std::size_t>(col) - 1)) + u" / 10"_s);
    }
    openAndFill({block('2', 1, {1}, 2)});
    for (int col = 1; col <= 6; ++col) {
        EXPECT_EQ(shown(0, col), QString::fromUtf8(names.at(static_cast<std::size_t>(col) - 1)) +
                                     (col == 2 ? u" / 100"_s : u" / 1"_s));
    }
}

TEST_F(DataTableWindow, ASampleOf0Shows0) {
    load();
    openAndFill({block('1', -3.7F, {0, 1}), block('D', 20, {0})});
    EXPECT_EQ(shown(1, 1), u"0"_s);
    EXPECT_EQ(shown(2, 1), marked("-3.7"));
    EXPECT_EQ(shown(1, 6), u"0"_s);
}

TEST_F(DataTableWindow, TheTextFilesFirstLineIsWhateverLabel1SaysInTheCurrentLanguage) {
    installLanguages();
    load();
    for (const auto& [language, unit] : {std::pair("mnuEnglish", "Unit: mV"), {"mnuChinese", "单位：（mV）"}}) {
        item(language).trigger();
        openAndFill({block('1', 1, {1})});
        EXPECT_EQ(part<QLabel>("Label1").text(), QString::fromUtf8(unit));
        saveAs(path(QString::fromUtf8(language)));
        EXPECT_TRUE(read(QString::fromUtf8(language) + u".txt"_s)
                        .startsWith((QString::fromUtf8(unit) + u"\r\n"_s).toLocal8Bit()));
    }
    item("mnuEnglish").trigger();
    EXPECT_EQ(part<QLabel>("Label1").text(), u"单位：（mV）"_s) << "a table that is loaded keeps its captions";
}

TEST_F(DataTableWindow, EveryCaptionComesFromTheLanguageFile) {
    installLanguages();
    load();
    item("mnuEnglish").trigger();
    open({block('1', 1, {1})});
    EXPECT_EQ(table()->windowTitle(), u"Data Table"_s);
    EXPECT_EQ(part<QPushButton>("CmdSave").text(), u"Save As ..."_s);
    EXPECT_EQ(part<QAction>("mnuSelectNone").text(), u"Select None"_s);
    item("mnuChinese").trigger();
    open({block('1', 1, {1})});
    EXPECT_EQ(table()->windowTitle(), u"数值列表"_s);
    EXPECT_EQ(part<QPushButton>("CmdSave").text(), u"另存为 ..."_s);
    EXPECT_EQ(part<QPushButton>("CmdExit").text(), u"退出"_s);
    EXPECT_EQ(box(0).text(), u"序号"_s);
    EXPECT_EQ(box(1).text(), u" ch1"_s);
    EXPECT_EQ(part<QAction>("mnuSelectAll").text(), u"全选"_s);
}

TEST_F(DataTableWindow, WithoutLanguageFilesItHasTheCaptionsOfTheDesign) {
    load();
    item("mnuTabular").trigger();
    EXPECT_EQ(table()->windowTitle(), u"数值列表"_s);
    EXPECT_EQ(part<QLabel>("Label1").text(), u"单位：（mV）"_s);
    const std::array captions{"sequence", " ch1", " ch2", " A", " B", " C", " D"};
    for (int col = 0; col < 7; ++col) {
        EXPECT_EQ(box(col).text(), QString::fromUtf8(captions.at(static_cast<std::size_t>(col))));
        EXPECT_TRUE(box(col).isChecked());
    }
    EXPECT_EQ(part<QPushButton>("CmdSave").text(), u"Save As ..."_s);
    EXPECT_EQ(part<QPushButton>("CmdExit").text(), u"Exit"_s);
}

TEST_F(DataTableWindow, IsLoadedUnseenBehindACaptureAndShownByTheMenu) {
    load();
    EXPECT_EQ(table(), nullptr);
    openAndFill({block('1', 1, ramp(60, 1))});
    EXPECT_FALSE(table()->isVisible());
    EXPECT_EQ(shown(60, 1), u"59"_s) << "filled without ever being seen";
    item("mnuTabular").trigger();
    EXPECT_TRUE(table()->isVisible());
    EXPECT_FALSE(table()->isModal());
}

TEST_F(DataTableWindow, TheToolbarsButton6ShowsIt) {
    load();
    form->show();
    QTest::mouseClick(&control<ToolBar>("Toolbar1").button(6), Qt::LeftButton);
    ASSERT_NE(table(), nullptr);
    EXPECT_TRUE(table()->isVisible());
}

TEST_F(DataTableWindow, BeforeAnyCaptureItIsATableOfOneRow) {
    load();
    item("mnuTabular").trigger();
    fill();
    EXPECT_EQ(table()->MSFlexGrid1().Rows(), 1);
    EXPECT_EQ(cells().rowCount(), 0);
}

TEST_F(DataTableWindow, ExitOnlyHidesItAndTheMenuShowsTheSameTableWithItsTicks) {
    load();
    openAndFill({block('1', 1, ramp(60, 1))});
    item("mnuTabular").trigger();
    const frmData* const before = table();
    box(2).setChecked(false);
    part<QPushButton>("CmdExit").click();
    EXPECT_FALSE(table()->isVisible());
    QSignalSpy refill(&cells(), &QAbstractItemModel::modelReset);
    item("mnuTabular").trigger();
    QTest::qWait(20);
    EXPECT_EQ(table(), before);
    EXPECT_TRUE(table()->isVisible());
    EXPECT_FALSE(box(2).isChecked());
    EXPECT_EQ(refill.count(), 0) << "no new fill";
}

TEST_F(DataTableWindow, ItsCloseBoxHidesItLikeExit) {
    load();
    openAndFill({block('1', 1, ramp(60, 1))});
    item("mnuTabular").trigger();
    const frmData* const before = table();
    box(2).setChecked(false);
    table()->close();
    EXPECT_FALSE(table()->isVisible());
    item("mnuTabular").trigger();
    EXPECT_EQ(table(), before);
    EXPECT_TRUE(table()->isVisible());
    EXPECT_FALSE(box(2).isChecked());
}

TEST_F(DataTableWindow, ExitDuringTheFillHidesItAndTheFillGoesOn) {
    load();
    open({block('1', 1, ramp(kSampleRows, 1))});
    item("mnuTabular").trigger();
    part<QPushButton>("CmdExit").click();
    EXPECT_FALSE(table()->isFilled());
    fill();
    EXPECT_FALSE(table()->isVisible());
    EXPECT_EQ(shown(kSampleRows, 1), QString::number(kSampleRows - 1));
}

TEST_F(DataTableWindow, ACaptureClosesItAndBringsAFreshOneWithAllTicks) {
    load();
    openAndFill({block('1', 1, ramp(60, 1))});
    item("mnuTabular").trigger();
    box(0).setChecked(false);
    const QPointer<frmData> before = table();
    openAndFill({block('1', 1, ramp(3, 5))});
    EXPECT_TRUE(before.isNull());
    EXPECT_FALSE(table()->isVisible());
    EXPECT_TRUE(box(0).isChecked());
    EXPECT_EQ(table()->MSFlexGrid1().Rows(), 4);
    EXPECT_EQ(shown(3, 1), u"10"_s);
}

TEST_F(DataTableWindow, ACaptureThatComesInMidFillStartsAnew) {
    load();
    open({block('1', 1, ramp(kSampleRows, 1)), block('2', 1, ramp(kSampleRows, 2))});
    QTest::qWait(3);
    openAndFill({block('2', 1, ramp(50, 3))});
    EXPECT_EQ(cells().rowCount(), 50);
    EXPECT_EQ(shown(50, 1), QString());
    EXPECT_EQ(shown(50, 2), u"147"_s);
}

TEST_F(DataTableWindow, OpenTakesItAwayEvenWhenItsDialogIsCancelled) {
    load();
    openAndFill({block('1', 1, ramp(3, 1))});
    item("mnuOpen").trigger(); // the dialog has no scripted answer, so it is cancelled
    EXPECT_EQ(table(), nullptr);
    item("mnuTabular").trigger();
    fill();
    EXPECT_EQ(shown(3, 1), u"2"_s) << "a fresh one shows the capture that is still there";
}

TEST_F(DataTableWindow, ARefusedFileLeavesNoneLoaded) {
    load();
    openAndFill({block('1', 1, ramp(3, 1))});
    write(u"bad.bin"_s, "KQXV02");
    dialogs.files.emplace_back(FileChoice{path(u"bad.bin"_s), 1});
    item("mnuOpen").trigger();
    EXPECT_EQ(table(), nullptr);
}

TEST_F(DataTableWindow, TheFillLetsOtherEventsRunBetweenItsStretches) {
    load();
    std::vector<CaptureBlock> blocks;
    for (const char id : {'1', '2', 'A', 'B', 'C', 'D'}) {
        blocks.push_back(block(id, 0.3F, ramp(kSampleRows, 7)));
    }
    open(blocks);
    int others = 0;
    QTimer other;
    QObject::connect(&other, &QTimer::timeout, [&] { others += table()->isFilled() ? 0 : 1; });
    other.start(0);
    fill();
    EXPECT_GT(others, 1);
}

TEST_F(DataTableWindow, StandsInTheMiddleOfTheScreen) {
    load();
    item("mnuTabular").trigger();
    const QRect area = table()->screen()->geometry();
    EXPECT_EQ(table()->pos(),
              area.topLeft() + QPoint((area.width() - table()->width()) / 2, (area.height() - table()->height()) / 2));
}

TEST_F(DataTableWindow, TheSelectMenuIsReachedByTheMenuKeyToo) {
    load();
    item("mnuTabular").trigger();
    auto& menu = part<QMenu>("mnuSelect");
    for (int col = 0; col < 7; ++col) {
        QContextMenuEvent asked(QContextMenuEvent::Keyboard, QPoint(2, 2), box(col).mapToGlobal(QPoint(2, 2)));
        QCoreApplication::sendEvent(&box(col), &asked);
        EXPECT_TRUE(menu.isVisible()) << col;
        menu.close();
    }
}

TEST_F(DataTableWindow, TheRightButtonOnTheFrameOrABoxOpensTheSelectMenu) {
    load();
    item("mnuTabular").trigger();
    auto& menu = part<QMenu>("mnuSelect");
    std::vector<QWidget*> places{&part<QWidget>("Frame1")};
    for (int col = 0; col < 7; ++col) {
        places.push_back(&box(col));
    }
    for (QWidget* place : places) {
        QTest::mouseClick(place, Qt::LeftButton, {}, QPoint(3, 3));
        EXPECT_FALSE(menu.isVisible());
        QTest::mousePress(place, Qt::RightButton, {}, QPoint(3, 3));
        EXPECT_TRUE(menu.isVisible()) << place->objectName().toStdString();
        menu.close();
    }
}

TEST_F(DataTableWindow, SelectNoneClearsAllBoxesAndSelectAllTicksThem) {
    load();
    item("mnuTabular").trigger();
    part<QAction>("mnuSelectNone").trigger();
    for (int col = 0; col < 7; ++col) {
        EXPECT_FALSE(box(col).isChecked());
    }
    box(3).setChecked(true);
    part<QAction>("mnuSelectAll").trigger();
    for (int col = 0; col < 7; ++col) {
        EXPECT_TRUE(box(col).isChecked());
    }
}

} // namespace
} // namespace sixtrace::test
