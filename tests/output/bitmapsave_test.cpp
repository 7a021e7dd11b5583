// SPDX-License-Identifier: MIT
#include "output/printwindow.h"

#include "platform/controls/picturebox.h"
#include "support/strings.h"

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
    save(u"screen"_s);
    const FileRequest& request = answering.fileRequests.back();
    EXPECT_EQ(request.fileName, QString());
    EXPECT_EQ(request.filter, u"BMP (*.bmp)|*.bmp"_s);
    EXPECT_EQ(request.filterIndex, 1);
    const QByteArray bytes = read(u"screen"_s);
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
    save(u"screen.bmp"_s);
    EXPECT_EQ(QImage::fromData(read(u"screen.bmp"_s), "BMP").size(), QSize(625, 401));
}

TEST_F(BitmapSaving, IsHiddenInTheMenu) {
    EXPECT_FALSE(item("mnuSaveAs").isVisible());
}

TEST_F(BitmapSaving, OverwriteRefusedNothingIsWritten) {
    write(u"old.bmp"_s, "old");
    answering.answers.push_back(Answer::No);
    save(u"old.bmp"_s);
    EXPECT_EQ(answering.messages, QStringList{u"File Exist!  Do you want to continue ?"_s});
    EXPECT_EQ(answering.questionTitles, QStringList{u"Message"_s});
    EXPECT_EQ(answering.messageIcons, std::vector{MessageIcon::Exclamation});
    EXPECT_EQ(read(u"old.bmp"_s), "old");
}

TEST_F(BitmapSaving, OverwriteAllowedReplacesTheFile) {
    write(u"old.bmp"_s, "old");
    answering.answers.push_back(Answer::Yes);
    save(u"old.bmp"_s);
    EXPECT_TRUE(read(u"old.bmp"_s).startsWith("BM"));
}

TEST_F(BitmapSaving, CancelledDialogWritesNothing) {
    const QStringList before = QDir(path(u"."_s)).entryList(QDir::Files);
    answering.files.emplace_back(std::nullopt);
    item("mnuSaveAs").trigger();
    EXPECT_EQ(QDir(path(u"."_s)).entryList(QDir::Files), before);
}

TEST_F(BitmapSaving, AFileThatCannotBeWrittenIsNotWrittenAndNothingIsSaid) {
    save(u"no/such/folder.bmp"_s);
    EXPECT_FALSE(QFileInfo::exists(path(u"no"_s)));
    EXPECT_TRUE(answering.messages.isEmpty());
}

TEST_F(BitmapSaving, ExistingFileSurvivesAFailedSave) {
    write(u"old.bmp"_s, "old");
    answering.answers.push_back(Answer::Yes);
    // No file may grow beyond 1000 bytes for a moment: a disk that is full.
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    const rlimit small{1000, before.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    save(u"old.bmp"_s);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(read(u"old.bmp"_s), "old");
    EXPECT_EQ(answering.messages.size(), 1) << "the question alone";
}

TEST_F(BitmapSaving, ExistingFolderSurvivesAFailedSave) {
    // A folder of that name cannot be replaced by a file, whoever runs this.
    ASSERT_TRUE(QDir(path(u"."_s)).mkpath(u"taken.bmp"_s));
    write(u"taken.bmp/inside"_s, "kept");
    save(u"taken.bmp"_s);
    EXPECT_TRUE(answering.messages.isEmpty()) << "it is no file that could be replaced";
    EXPECT_EQ(read(u"taken.bmp/inside"_s), "kept");
}

} // namespace
} // namespace sixtrace::test
