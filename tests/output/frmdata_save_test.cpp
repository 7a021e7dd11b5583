// SPDX-License-Identifier: MIT
// Saving through the window: the dialog, the questions and messages, and what is on the disk afterwards.
#include "output/tablewindowfixture.h"
#include "support/hardships.h"

#include <QDateTime>
#include <QPointer>

namespace sixtrace::test {
namespace {

const QByteArray kTwoRows =
    "              ch1 / 1       ch2 / 1       A / 1         B / 1         C / 1         D / 1         \r\n"
    "1             5                                                                                   \r\n"
    "2             -5                                                                                  \r\n";

class SavingTheTable : public TableWindow {
protected:
    /// A table of two samples.
    void loadTwoRows() {
        load();
        openAndFill({block('1', 5, {1, -1})});
        dialogs.fileRequests.clear();
    }
    [[nodiscard]] QByteArray unit() { return part<QLabel>("Label1").text().toLocal8Bit() + "\r\n"; }
};

TEST_F(SavingTheTable, OffersDateAndTimeAsNameInTheDatFolderAndTheTextFilter) {
    loadTwoRows();
    const QDateTime before = QDateTime::currentDateTime();
    saveAs(path(text("t.txt")));
    const QDateTime after = QDateTime::currentDateTime();
    ASSERT_EQ(dialogs.fileRequests.size(), 1U);
    const FileRequest& request = dialogs.fileRequests[0];
    const QString format = text("yyMMddHHmm");
    EXPECT_TRUE(request.fileName == path(text("dat/D")) + before.toString(format) ||
                request.fileName == path(text("dat/D")) + after.toString(format))
        << request.fileName.toStdString();
    EXPECT_EQ(request.filter, text("Text file (*.txt)|*.TXT|Excel file|*.xls"));
    EXPECT_EQ(request.filterIndex, 1);
}

TEST_F(SavingTheTable, WritesTheTextFileSaysSoAndKeepsItsName) {
    loadTwoRows();
    saveAs(path(text("t.txt")));
    EXPECT_EQ(read(text("t.txt")), unit() + kTwoRows);
    EXPECT_EQ(dialogs.messages, QStringList{text("文件保存成功")});
    EXPECT_EQ(dialogs.titles, QStringList{QString()});
    EXPECT_EQ(dialogs.messageIcons.back(), MessageIcon::Plain);
    EXPECT_EQ(model->ReceivedFile, path(text("t.txt")));
}

TEST_F(SavingTheTable, TheMessageOfSuccessIsChineseInBothLanguages) {
    installLanguages();
    load();
    item("mnuEnglish").trigger();
    openAndFill({block('1', 5, {1, -1})});
    saveAs(path(text("t.txt")));
    EXPECT_EQ(dialogs.messages, QStringList{text("文件保存成功")});
}

TEST_F(SavingTheTable, CancelShowsItsErrorNumberAndNothingElseHappens) {
    loadTwoRows();
    const QString before = model->ReceivedFile;
    part<QPushButton>("CmdSave").click();
    EXPECT_EQ(dialogs.messages, QStringList{text("32755:Cancel was selected.")});
    EXPECT_EQ(dialogs.messageIcons.back(), MessageIcon::Plain);
    EXPECT_EQ(model->ReceivedFile, before);
    EXPECT_TRUE(QDir(path(text("dat"))).isEmpty());
}

TEST_F(SavingTheTable, AnExistingFileIsAskedForAndAnythingButYesKeepsItWithoutAWord) {
    loadTwoRows();
    write(text("t.txt"), "kept");
    saveAs(path(text("t.txt")));
    EXPECT_EQ(dialogs.messages, QStringList{text("File Exist!  Do you want to continue ?")});
    EXPECT_EQ(dialogs.titles, QStringList{text("Message")});
    EXPECT_EQ(dialogs.messageIcons.back(), MessageIcon::Exclamation);
    EXPECT_EQ(read(text("t.txt")), QByteArray("kept"));
    EXPECT_EQ(model->ReceivedFile, path(text("t.txt"))) << "the name is kept before the question";
}

TEST_F(SavingTheTable, YesReplacesTheExistingFile) {
    loadTwoRows();
    write(text("t.txt"), "old");
    dialogs.answers.push_back(Answer::Yes);
    saveAs(path(text("t.txt")));
    EXPECT_EQ(dialogs.messages, (QStringList{text("File Exist!  Do you want to continue ?"), text("文件保存成功")}));
    EXPECT_EQ(read(text("t.txt")), unit() + kTwoRows);
}

TEST_F(SavingTheTable, ANameWithoutExtensionGetsThatOfItsFilterBeforeTheQuestion) {
    loadTwoRows();
    write(text("t.txt"), "old");
    write(text("t"), "other");
    dialogs.answers.push_back(Answer::Yes);
    saveAs(path(text("t")));
    EXPECT_EQ(read(text("t.txt")), unit() + kTwoRows);
    EXPECT_EQ(read(text("t")), QByteArray("other"));
    saveAs(path(text("w")), 2);
    EXPECT_TRUE(read(text("w.xls")).startsWith("\xD0\xCF\x11\xE0"));
    EXPECT_EQ(model->ReceivedFile, path(text("w.xls")));
}

TEST_F(SavingTheTable, TheFilterAloneDecidesNotTheExtensionTyped) {
    loadTwoRows();
    saveAs(path(text("a.xls")), 1);
    EXPECT_EQ(read(text("a.xls")), unit() + kTwoRows);
    saveAs(path(text("b.txt")), 2);
    EXPECT_TRUE(read(text("b.txt")).startsWith("\xD0\xCF\x11\xE0"));
    saveAs(path(text("c.xlsx")), 2);
    EXPECT_TRUE(read(text("c.xlsx")).startsWith("PK")) << "either of them is a workbook";
    EXPECT_EQ(dialogs.messages.count(text("文件保存成功")), 3);
}

TEST_F(SavingTheTable, WritesTheColumnsWhoseBoxesAreTicked) {
    loadTwoRows();
    part<QAction>("mnuSelectNone").trigger();
    box(1).setChecked(true);
    saveAs(path(text("t.txt")));
    EXPECT_EQ(read(text("t.txt")), unit() + "ch1 / 1       \r\n5             \r\n-5            \r\n");
    box(1).setChecked(false);
    saveAs(path(text("n.txt")));
    EXPECT_EQ(read(text("n.txt")), unit() + "\r\n\r\n\r\n");
}

TEST_F(SavingTheTable, InMidFillItWritesTheTableAsItStands) {
    load();
    open({block('1', 1, ramp(kSampleRows, 1))});
    ASSERT_TRUE(QTest::qWaitFor([this] { return table()->MSFlexGrid1().Rows() == kSampleRows + 1; }));
    ASSERT_FALSE(table()->isFilled());
    saveAs(path(text("t.txt")));
    const QList<QByteArray> lines = read(text("t.txt")).split('\n');
    ASSERT_EQ(lines.size(), kSampleRows + 3) << "unit, head, all rows, and nothing behind the last line end";
    EXPECT_TRUE(lines.at(41).startsWith("40            39 "));
    EXPECT_EQ(lines.at(kSampleRows + 1), QByteArray(98, ' ') + '\r');
    fill();
    saveAs(path(text("whole.txt")));
    EXPECT_TRUE(read(text("whole.txt")).split('\n').at(kSampleRows + 1).startsWith("10231         10230 "));
}

TEST_F(SavingTheTable, AFolderThatIsGoneIsError76) {
    loadTwoRows();
    for (const int filter : {1, 2}) {
        dialogs.messages.clear();
        saveAs(path(text("none/t.txt")), filter);
        EXPECT_EQ(dialogs.messages, QStringList{text("76:Path not found")});
    }
}

TEST_F(SavingTheTable, AFullDiskIsError61AndTheExistingFileSurvives) {
    loadTwoRows();
    write(text("t.txt"), "kept");
    for (const int filter : {1, 2}) {
        dialogs.messages.clear();
        dialogs.answers.push_back(Answer::Yes);
        {
            const SmallDisk disk(100);
            saveAs(path(text("t.txt")), filter);
        }
        EXPECT_EQ(dialogs.messages.back(), text("61:Disk full"));
        EXPECT_EQ(read(text("t.txt")), QByteArray("kept"));
    }
}

TEST_F(SavingTheTable, ADeviceIsNoFileToReplace) {
    loadTwoRows();
    ASSERT_TRUE(QFile::link(text("/dev/full"), path(text("full.txt"))));
    dialogs.answers.push_back(Answer::Yes);
    saveAs(path(text("full.txt")));
    EXPECT_EQ(dialogs.messages.back(), text("75:Path/File access error"));
}

TEST_F(SavingTheTable, AWorkbookOfATableOfOneRowIsError9) {
    load();
    item("mnuTabular").trigger();
    fill();
    saveAs(path(text("t.xls")), 2);
    EXPECT_EQ(dialogs.messages, QStringList{text("9:Subscript out of range")});
    EXPECT_FALSE(QFile::exists(path(text("t.xls"))));
    saveAs(path(text("t.txt")), 1);
    EXPECT_EQ(dialogs.messages.back(), text("文件保存成功"));
}

TEST_F(SavingTheTable, ACaptureThatIsLoadedWhileTheDialogIsOpenDoesNotChangeWhatIsSaved) {
    loadTwoRows();
    const QPointer<frmData> saved = table();
    dialogs.files = {FileChoice{path(text("other.bin")), 1}, FileChoice{path(text("t.txt")), 1}};
    dialogs.whileFileDialogIsOpen = [this] {
        dialogs.whileFileDialogIsOpen = nullptr;
        item("mnuOpen").trigger();
    };
    write(text("other.bin"), captureBytes(*captureForm("V11"), {block('2', 1, {7})}));
    const QByteArray unitLine = unit();
    part<QPushButton>("CmdSave").click();
    EXPECT_EQ(read(text("t.txt")), unitLine + kTwoRows);
    EXPECT_EQ(dialogs.messages, QStringList{text("文件保存成功")});
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(saved.isNull()) << "the old table went behind its save";
    fill();
    EXPECT_EQ(shown(1, 2), text("7"));
}

} // namespace
} // namespace sixtrace::test
