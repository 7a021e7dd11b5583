// SPDX-License-Identifier: MIT
#include "capture/captureloading.h"

#include "capture/bytes.h"
#include "support/scripteddialogs.h"
#include "support/strings.h"

namespace sixtrace::test {
namespace {

/// Open, New and the older reader without a main window.
class Loading : public CaptureTest {
protected:
    void choose(const QString& file) { dialogs.files.emplace_back(FileChoice{file, 1}); }
    [[nodiscard]] QString message() const { return dialogs.messages.join(u'|'); }

    ScriptedDialogs dialogs;
    QString folder = path(QString());
    CaptureLoading loading{view->scope(), dialogs, [this] { return folder; }};
};

TEST_F(Loading, ACancelledOpenClosesTheTableAndSetsTheProgramFolder) {
    folder = path(u"moved"_s);
    loading.mnuOpen_Click();
    EXPECT_FALSE(view->tableLoaded);
    EXPECT_EQ(model->AppDir, path(u"moved/"_s));
    EXPECT_TRUE(message().isEmpty());
    EXPECT_EQ(view->loadedPath, QString());
}

TEST_F(Loading, AnOpenedFileIsLoadedNamedAndTheCurrentMarkerClamped) {
    // A zero line 150 above the middle: its marker stands at 6030 x -50 / 200 - 105, above the strip.
    choose(put(capture("V11", {{.mark = "CH2", .zeroLevel = 150}, {.mark = "CHA", .zeroLevel = 150}})));
    loading.mnuOpen_Click();
    EXPECT_EQ(model->FileKind, 4);
    EXPECT_TRUE(view->tableLoaded);
    EXPECT_EQ(view->loadedPath, path());
    EXPECT_EQ(view->CurChannel, 2);
    EXPECT_EQ(view->markers[2].top, Twips(-1612.5));
    EXPECT_TRUE(view->markers[2].standInShown);
    EXPECT_FALSE(view->markers[2].shown);
    EXPECT_FALSE(view->markers[1].standInShown) << "the others keep their markers, although these are outside";
    EXPECT_TRUE(view->markers[1].shown);
}

TEST_F(Loading, ARefusedFileIsNamedToo) {
    choose(put("no capture"));
    loading.mnuOpen_Click();
    EXPECT_TRUE(message().isEmpty());
    EXPECT_EQ(view->loadedPath, path());
    EXPECT_FALSE(view->tableLoaded);
}

TEST_F(Loading, NewClearsTheScreenAndNothingElse) {
    load("V11", {{}});
    loading.mnuNew_Click();
    EXPECT_EQ(view->blanks, 1);
    EXPECT_EQ(model->FileKind, 4);
    EXPECT_TRUE(view->ticks[0]);
    EXPECT_TRUE(view->tableLoaded);
}

TEST_F(Loading, TheOlderReaderAsksWithoutAPresetNameAndIsSilentWhenCancelled) {
    loading.OpenBinFile();
    ASSERT_EQ(dialogs.fileRequests.size(), 1U);
    EXPECT_EQ(dialogs.fileRequests[0].fileName, QString());
    EXPECT_EQ(dialogs.fileRequests[0].filter, u"KQX bin (*.bin)|*.bin"_s);
    EXPECT_EQ(dialogs.fileRequests[0].filterIndex, 1);
    EXPECT_TRUE(message().isEmpty());
    EXPECT_TRUE(view->tableLoaded) << "it closes no table beforehand";
}

TEST_F(Loading, TheOlderReaderReportsAMissingFileWithoutItsPathAndAFileThatIsNoCapture) {
    choose(path(u"none.bin"_s));
    loading.OpenBinFile();
    EXPECT_EQ(message(), u" no this file!"_s);
    EXPECT_EQ(dialogs.messageIcons.back(), MessageIcon::Critical);
    choose(put(capture("V11", {{}})));
    loading.OpenBinFile();
    EXPECT_EQ(dialogs.messages.back(), u"not KQX bin file!"_s);
    EXPECT_EQ(view->frames, 0);
}

TEST_F(Loading, TheOlderReaderLoadsWithoutAMessageAndShowsNoPath) {
    Bytes bytes;
    bytes.header("bin").text("CHA").int32(0).int32(4).int32(1).int32(0).int32(15).real(50).int32(0).int32(6);
    bytes.real(5).real(900).real(20).int16(77);
    choose(put(bytes.bytes()));
    loading.OpenBinFile();
    EXPECT_TRUE(message().isEmpty());
    EXPECT_EQ(model->SampleData(2, 0), 77);
    EXPECT_EQ(view->frames, 2); // a tick, and the end
    EXPECT_EQ(view->loadedPath, QString());
}

} // namespace
} // namespace sixtrace::test
