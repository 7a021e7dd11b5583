// SPDX-License-Identifier: MIT
#include "output/printwindow.h"

#include "platform/controls/picturebox.h"

#include <QImage>

#include <sys/resource.h>

#include <csignal>

namespace sixtrace::test {
namespace {

class BitmapSaving : public PrintWindow {
protected:
    void SetUp() override {
        PrintWindow::SetUp();
        openWithCapture();
    }
    void save(const QString& name) {
        answering.files.emplace_back(FileChoice{path(name), 1});
        item("mnuSaveAs").trigger();
    }
};

TEST_F(BitmapSaving, SavesTheStripAndTheScreenRightOfItAsABitmap) {
    save(QStringLiteral("screen"));
    const FileRequest& request = answering.fileRequests.back();
    EXPECT_EQ(request.fileName, QString());
    EXPECT_EQ(request.filter, QStringLiteral("BMP (*.bmp)|*.bmp"));
    EXPECT_EQ(request.filterIndex, 1);
    const QByteArray bytes = read(QStringLiteral("screen"));
    EXPECT_TRUE(bytes.startsWith("BM")) << "the name is taken as typed";
    const QImage saved = QImage::fromData(bytes, "BMP");
    ASSERT_EQ(saved.size(), QSize(24 + 601, 401));
    // 24 pixels of strip, then the screen, each pixel in its place. Cursors and readout lie over a part of it.
    const QImage strip = control<QWidget>("Picture3").grab().toImage();
    const QImage screen = control<PictureBox>("Picture2").grab().toImage();
    for (int y = 0; y < 401; ++y) {
        for (int x = 0; x < 625; ++x) {
            const QRgb expected = x < 24 ? strip.pixel(x, y) : screen.pixel(x - 24, y);
            ASSERT_EQ(saved.pixel(x, y) & 0xFFFFFF, expected & 0xFFFFFF) << x << " " << y;
        }
    }
    EXPECT_TRUE(answering.messages.isEmpty());
}

TEST_F(BitmapSaving, KeepsTheScreensHeightAfterAPageHasBeenComposed) {
    openPreview().close();
    unloadClosed();
    item("mnuGraticule").trigger();
    save(QStringLiteral("screen.bmp"));
    EXPECT_EQ(QImage::fromData(read(QStringLiteral("screen.bmp")), "BMP").size(), QSize(625, 401));
}

TEST_F(BitmapSaving, IsHiddenInTheMenu) {
    EXPECT_FALSE(item("mnuSaveAs").isVisible());
}

TEST_F(BitmapSaving, OverwriteRefusedNothingIsWritten) {
    write(QStringLiteral("old.bmp"), "old");
    answering.answers.push_back(Answer::No);
    save(QStringLiteral("old.bmp"));
    EXPECT_EQ(answering.messages, QStringList{QStringLiteral("File Exist!  Do you want to continue ?")});
    EXPECT_EQ(answering.questionTitles, QStringList{QStringLiteral("Message")});
    EXPECT_EQ(answering.messageIcons, std::vector{MessageIcon::Exclamation});
    EXPECT_EQ(read(QStringLiteral("old.bmp")), "old");
}

TEST_F(BitmapSaving, OverwriteAllowedReplacesTheFile) {
    write(QStringLiteral("old.bmp"), "old");
    answering.answers.push_back(Answer::Yes);
    save(QStringLiteral("old.bmp"));
    EXPECT_TRUE(read(QStringLiteral("old.bmp")).startsWith("BM"));
}

TEST_F(BitmapSaving, CancelledDialogWritesNothing) {
    const QStringList before = QDir(path(QStringLiteral("."))).entryList(QDir::Files);
    answering.files.emplace_back(std::nullopt);
    item("mnuSaveAs").trigger();
    EXPECT_EQ(QDir(path(QStringLiteral("."))).entryList(QDir::Files), before);
}

TEST_F(BitmapSaving, AFileThatCannotBeWrittenIsNotWrittenAndNothingIsSaid) {
    save(QStringLiteral("no/such/folder.bmp"));
    EXPECT_FALSE(QFileInfo::exists(path(QStringLiteral("no"))));
    EXPECT_TRUE(answering.messages.isEmpty());
}

TEST_F(BitmapSaving, ExistingFileSurvivesAFailedSave) {
    write(QStringLiteral("old.bmp"), "old");
    answering.answers.push_back(Answer::Yes);
    // No file may grow beyond 1000 bytes for a moment: a disk that is full.
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    const rlimit small{1000, before.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    save(QStringLiteral("old.bmp"));
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(read(QStringLiteral("old.bmp")), "old");
    EXPECT_EQ(answering.messages.size(), 1) << "the question alone";
}

TEST_F(BitmapSaving, ExistingFolderSurvivesAFailedSave) {
    // A folder of that name cannot be replaced by a file, whoever runs this.
    ASSERT_TRUE(QDir(path(QStringLiteral("."))).mkpath(QStringLiteral("taken.bmp")));
    write(QStringLiteral("taken.bmp/inside"), "kept");
    save(QStringLiteral("taken.bmp"));
    EXPECT_TRUE(answering.messages.isEmpty()) << "it is no file that could be replaced";
    EXPECT_EQ(read(QStringLiteral("taken.bmp/inside")), "kept");
}

} // namespace
} // namespace sixtrace::test
