// SPDX-License-Identifier: MIT
// Memory and handles of the main window over more loads, fetches and redraws than a long day brings.
#include "acquire/scriptedlink.h"
#include "capture/bytes.h"
#include "platform/controls/positionbar.h"
#include "shell/frmcomfixture.h"
#include "soak/growth.h"
#include "support/strings.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

#include <stdexcept>

#if defined(__SANITIZE_ADDRESS__)
/// Options of the address checks, so that ten thousand rounds take only seconds: freed memory is reused soon, and short
/// call stacks are kept for it.
extern "C" const char* __asan_default_options() {
    return "malloc_context_size=3:quarantine_size_mb=4:thread_local_quarantine_size_kb=64";
}
#endif

namespace sixtrace::test {
namespace {

constexpr int kRounds = 10'000;

/// A capture of `channels` channels with a few samples each.
QByteArray smallCapture(int channels) {
    static constexpr std::array kMarks{"CH1", "CH2", "CHA", "CHB", "CHC", "CHD"};
    std::vector<Block> blocks(static_cast<std::size_t>(channels));
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        blocks[i].mark = kMarks.at(i);
    }
    return capture("V11", blocks);
}

class Growth : public FrmComTest {
protected:
    void SetUp() override {
        FrmComTest::SetUp();
        installLanguages();
        write(u"one.bin"_s, smallCapture(1));
        write(u"six.bin"_s, smallCapture(6));
        write(u"none.bin"_s, "no capture");
        form = std::make_unique<FrmCom>(
            *model,
            FrmComServices{.dialogs = dialogs,
                           .applicationFolder = [this] { return path(u"."_s); },
                           .endProcess = [] {},
                           .acquisition = {.usb = &link,
                                           .locatePort = [](int) { return QString(); },
                                           .autoGetFile = [this] { return Result<QString>(path(u"AutoGet.bin"_s)); }}});
        form->show();
    }
    /// Empties what the test doubles have recorded: it is not growth of the program.
    void forget() {
        dialogs.fileRequests.clear();
        dialogs.messages.clear();
        dialogs.titles.clear();
        dialogs.messageIcons.clear();
        link.calls.clear();
    }

    ScriptedLink link;
};

TEST_F(Growth, LoadsOfDifferentFilesLeaveNothing) {
    const std::array names{"one.bin", "none.bin", "one.bin", "one.bin", "six.bin", "one.bin", "one.bin", "one.bin"};
    int loaded = 0;
    expectNoGrowth("files opened", kRounds, [&](int i) {
        dialogs.files.emplace_back(
            FileChoice{path(QString::fromUtf8(names.at(static_cast<std::size_t>(i) % names.size()))), 1});
        item("mnuOpen").trigger();
        loaded += model->ChannelPresent[0] == 1 ? 1 : 0;
        forget();
    });
    EXPECT_GT(loaded, kRounds / 2);
}

// Each fetch loads and redraws too.
TEST_F(Growth, TimedFetchesLeaveNothing) {
    const QByteArray file = smallCapture(1);
    int fetched = 0;
    model->AutoRun = true;
    expectNoGrowth("timed fetches", kRounds, [&](int i) {
        link.reads = 0;
        link.failingRead = i % 10 == 9 ? std::optional(1) : std::nullopt; // every tenth transfer breaks off
        link.stream = ScriptedLink::transfer(file);
        form->acquisition().Timetime1_Timer();
        if (model->AutoRun) {
            ++fetched;
        } else {
            model->AutoRun = true; // a failure has stopped timed acquisition
        }
        forget();
    });
    EXPECT_EQ(fetched, (kRounds + kRounds / 10) * 9 / 10);
    EXPECT_EQ(model->ChannelPresent[0], 1);
    EXPECT_EQ(read(u"AutoGet.bin"_s), file + '\0');
}

TEST_F(Growth, FetchesByHandLeaveNothing) {
    const QByteArray file = smallCapture(2);
    FrmUSB& window = form->acquisition().usbWindow();
    int fetched = 0;
    expectNoGrowth("fetches by hand", 200, [&](int) {
        link.stream = ScriptedLink::transfer(file);
        QTimer::singleShot(0, &window, [&] {
            window.findChild<QLineEdit*>(u"Text2"_s)->setText(path(u"hand.bin"_s));
            window.findChild<QPushButton*>(u"Command4"_s)->click();
        });
        item("mnuAcquire").trigger();
        fetched += model->ReceivedFile == path(u"hand.bin"_s) ? 1 : 0;
        forget();
    });
    EXPECT_EQ(fetched, 220);
    EXPECT_EQ(read(u"hand.bin"_s), file + '\0');
}

TEST_F(Growth, RedrawsLeaveNothing) {
    dialogs.files.emplace_back(FileChoice{path(u"six.bin"_s), 1});
    item("mnuOpen").trigger();
    auto& zero = control<PositionBar>("VScroll1");
    const int middle = zero.Max() / 2;
    const auto channel = static_cast<std::size_t>(form->state().CurChannel);
    double line = 0;
    int moved = 0;
    expectNoGrowth("redraws", kRounds, [&](int i) {
        zero.setValue(middle + i % 7);
        moved += model->ChannelYPos.at(channel) == line ? 0 : 1; // the frame calculates it
        line = model->ChannelYPos.at(channel);
        if (i % 50 == 0) {
            form->repaint();
            QCoreApplication::processEvents();
        }
    });
    EXPECT_GE(moved, kRounds + kRounds / 10 - 2);
}

TEST_F(Growth, SettingsReadAndWrittenLeaveNothing) {
    expectNoGrowth("changes of language and lines", 60, [&](int i) {
        item(i % 2 == 0 ? "mnuEnglish" : "mnuChinese").trigger();
        item(i % 2 == 0 ? "mnuLine" : "mnuPoint").trigger();
    });
    EXPECT_EQ(QDir(path(u"."_s)).entryList({u"vkq.ini*"_s}, QDir::Files | QDir::Hidden), QStringList(u"vkq.ini"_s));
}

TEST_F(Growth, SavedPicturesLeaveNothing) {
    dialogs.files.emplace_back(FileChoice{path(u"six.bin"_s), 1});
    item("mnuOpen").trigger();
    expectNoGrowth("saved pictures", 100, [&](int) {
        dialogs.files.emplace_back(FileChoice{path(u"screen.bmp"_s), 1});
        dialogs.answers.push_back(Answer::Yes);
        item("mnuSaveAs").trigger();
        dialogs.answers.clear();
        forget();
    });
    EXPECT_TRUE(read(u"screen.bmp"_s).startsWith("BM"));
}

} // namespace
} // namespace sixtrace::test
