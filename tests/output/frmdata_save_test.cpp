// SPDX-License-Identifier: MIT
// Saving through the window: the dialog, the questions and messages, and what is on the disk afterwards.
#include "output/tablewindowfixture.h"
#include "support/hardships.h"
#include "support/strings.h"

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
    saveAs(path(u"t.txt"_s));
    const QDateTime after = QDateTime::currentDateTime();
    ASSERT_EQ(dialogs.fileRequests.size(), 1U);
    const FileRequest& request = dialogs.fileRequests[0];
    const QString format = u"yyMMddHHmm"_s;
    EXPECT_TRUE(request.fileName == path(u"dat/D"_s) + before.toString(format) ||
                request.fileName == path(u"dat/D"_s) + after.toString(format))
        << request.fileName.toStdString();
    EXPECT_EQ(request.filter, u"Text file (*.txt)|*.TXT|Excel file|*.xls"_s);
    EXPECT_EQ(request.filterIndex, 1);
}

TEST_F(SavingTheTable, WritesTheTextFileSaysSoAndKeepsItsName) {
    loadTwoRows();
    saveAs(path(u"t.txt"_s));
    EXPECT_EQ(read(u"t.txt"_s), unit() + kTwoRows);
    EXPECT_EQ(dialogs.messages, QStringList{u"文件保存成功"_s});
    EXPECT_EQ(dialogs.titles, QStringList{QString()});
    EXPECT_EQ(dialogs.messageIcons.back(), MessageIcon::Plain);
    EXPECT_EQ(model->ReceivedFile, path(u"t.txt"_s));
}

TEST_F(SavingTheTable, TheMessageOfSuccessIsChineseInBothLanguages) {
    installLanguages();
    load();
    item("mnuEnglish").trigger();
    openAndFill({block('1', 5, {1, -1})});
    saveAs(path(u"t.txt"_s));
    EXPECT_EQ(dialogs.messages, QStringList{u"文件保存成功"_s});
}

TEST_F(SavingTheTable, CancelShowsItsErrorNumberAndNothingElseHappens) {
    loadTwoRows();
    const QString before = model->ReceivedFile;
    part<QPushButton>("CmdSave").click();
    EXPECT_EQ(dialogs.messages, QStringList{u"32755:Cancel was selected."_s});
    EXPECT_EQ(dialogs.messageIcons.back(), MessageIcon::Plain);
    EXPECT_EQ(model->ReceivedFile, before);
    EXPECT_TRUE(QDir(path(u"dat"_s)).isEmpty());
}

TEST_F(SavingTheTable, AnExistingFileIsAskedForAndAnythingButYesKeepsItWithoutAWord) {
    loadTwoRows();
    write(u"t.txt"_s, "kept");
    saveAs(path(u"t.txt"_s));
    EXPECT_EQ(dialogs.messages, QStringList{u"File Exist!  Do you want to continue ?"_s});
    EXPECT_EQ(dialogs.titles, QStringList{u"Message"_s});
    EXPECT_EQ(dialogs.messageIcons.back(), MessageIcon::Exclamation);
    EXPECT_EQ(read(u"t.txt"_s), QByteArray("kept"));
    EXPECT_EQ(model->ReceivedFile, path(u"t.txt"_s)) << "the name is kept before the question";
}

TEST_F(SavingTheTable, YesReplacesTheExistingFile) {
    loadTwoRows();
    write(u"t.txt"_s, "old");
    dialogs.answers.push_back(Answer::Yes);
    saveAs(path(u"t.txt"_s));
    EXPECT_EQ(dialogs.messages, (QStringList{u"File Exist!  Do you want to continue ?"_s, u"文件保存成功"_s}));
    EXPECT_EQ(read(u"t.txt"_s), unit() + kTwoRows);
}

TEST_F(SavingTheTable, ANameWithoutExtensionGetsThatOfItsFilterBeforeTheQuestion) {
    loadTwoRows();
    write(u"t.txt"_s, "old");
    write(u"t"_s, "other");
    dialogs.answers.push_back(Answer::Yes);
    saveAs(path(u"t"_s));
    EXPECT_EQ(read(u"t.txt"_s), unit() + kTwoRows);
    EXPECT_EQ(read(u"t"_s), QByteArray("other"));
    saveAs(path(u"w"_s), 2);
    EXPECT_TRUE(read(u"w.xls"_s).startsWith("\xD0\xCF\x11\xE0"));
    EXPECT_EQ(model->ReceivedFile, path(u"w.xls"_s));
}

TEST_F(SavingTheTable, TheFilterAloneDecidesNotTheExtensionTyped) {
    loadTwoRows();
    saveAs(path(u"a.xls"_s), 1);
    EXPECT_EQ(read(u"a.xls"_s), unit() + kTwoRows);
    saveAs(path(u"b.txt"_s), 2);
    EXPECT_TRUE(read(u"b.txt"_s).startsWith("\xD0\xCF\x11\xE0"));
    saveAs(path(u"c.xlsx"_s), 2);
    EXPECT_TRUE(read(u"c.xlsx"_s).startsWith("PK")) << "either of them is a workbook";
    EXPECT_EQ(dialogs.messages.count(u"文件保存成功"_s), 3);
}

TEST_F(SavingTheTable, WritesTheColumnsWhoseBoxesAreTicked) {
    loadTwoRows();
    part<QAction>("mnuSelectNone").trigger();
    box(1).setChecked(true);
    saveAs(path(u"t.txt"_s));
    EXPECT_EQ(read(u"t.txt"_s), unit() + "ch1 / 1       \r\n5             \r\n-5            \r\n");
    box(1).setChecked(false);
    saveAs(path(u"n.txt"_s));
    EXPECT_EQ(read(u"n.txt"_s), unit() + "\r\n\r\n\r\n");
}

TEST_F(SavingTheTable, InMidFillItWritesTheTableAsItStands) {
    load();
    open({block('1', 1, ramp(kSampleRows, 1))});
    ASSERT_TRUE(QTest::qWaitFor([this] { return table()->MSFlexGrid1().Rows() == kSampleRows + 1; }));
    ASSERT_FALSE(table()->isFilled());
    saveAs(path(u"t.txt"_s));
    const QList<QByteArray> lines = read(u"t.txt"_s).split('\n');
    ASSERT_EQ(lines.size(), kSampleRows + 3) << "unit, head, all rows, and nothing behind the last line end";
    EXPECT_TRUE(lines.at(41).startsWith("40            39 "));
    EXPECT_EQ(lines.at(kSampleRows + 1), QByteArray(98, ' ') + '\r');
    fill();
    saveAs(path(u"whole.txt"_s));
    EXPECT_TRUE(read(u"whole.txt"_s).split('\n').at(kSampleRows + 1).startsWith("10231         10230 "));
}

TEST_F(SavingTheTable, AFolderThatIsGoneIsError76) {
    loadTwoRows();
    for (const int filter : {1, 2}) {
        dialogs.messages.clear();
        saveAs(path(u"none/t.txt"_s), filter);
        EXPECT_EQ(dialogs.messages, QStringList{u"76:Path not found"_s});
    }
}

TEST_F(SavingTheTable, AFullDiskIsError61AndTheExistingFileSurvives) {
    loadTwoRows();
    write(u"t.txt"_s, "kept");
    for (const int filter : {1, 2}) {
        dialogs.messages.clear();
        dialogs.answers.push_back(Answer::Yes);
        {
            const SmallDisk disk(100);
            saveAs(path(u"t.txt"_s), filter);
        }
        EXPECT_EQ(dialogs.messages.back(), u"61:Disk full"_s);
        EXPECT_EQ(read(u"t.txt"_s), QByteArray("kept"));
    }
}

TEST_F(SavingTheTable, ADeviceIsNoFileToReplace) {
    loadTwoRows();
    ASSERT_TRUE(QFile::link(u"/dev/full"_s, path(u"full.txt"_s)));
    dialogs.answers.push_back(Answer::Yes);
    saveAs(path(u"full.txt"_s));
    EXPECT_EQ(dialogs.messages.back(), u"75:Path/File access error"_s);
}

TEST_F(SavingTheTable, AWorkbookOfATableOfOneRowIsError9) {
    load();
    item("mnuTabular").trigger();
    fill();
    saveAs(path(u"t.xls"_s), 2);
    EXPECT_EQ(dialogs.messages, QStringList{u"9:Subscript out of range"_s});
    EXPECT_FALSE(QFile::exists(path(u"t.xls"_s)));
    saveAs(path(u"t.txt"_s), 1);
    EXPECT_EQ(dialogs.messages.back(), u"文件保存成功"_s);
}

TEST_F(SavingTheTable, ACaptureThatIsLoadedWhileTheDialogIsOpenDoesNotChangeWhatIsSaved) {
    loadTwoRows();
    const QPointer<frmData> saved = table();
    dialogs.files = {FileChoice{path(u"other.bin"_s), 1}, FileChoice{path(u"t.txt"_s), 1}};
    dialogs.whileFileDialogIsOpen = [this] {
        dialogs.whileFileDialogIsOpen = nullptr;
        item("mnuOpen").trigger();
    };
    write(u"other.bin"_s, captureBytes(*captureForm("V11"), {block('2', 1, {7})}));
    const QByteArray unitLine = unit();
    part<QPushButton>("CmdSave").click();
    EXPECT_EQ(read(u"t.txt"_s), unitLine + kTwoRows);
    EXPECT_EQ(dialogs.messages, QStringList{u"文件保存成功"_s});
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(saved.isNull()) << "the old table went behind its save";
    fill();
    EXPECT_EQ(shown(1, 2), u"7"_s);
}

} // namespace
} // namespace sixtrace::test
