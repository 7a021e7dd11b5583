// SPDX-License-Identifier: MIT
// The USB window alone: what it shows, and in which order it calls the transfer library.
#include "acquire/frmusb.h"

#include "acquire/scriptedlink.h"
#include "platform/controls/look.h"
#include "support/openfiles.h"
#include "support/scripteddialogs.h"
#include "support/strings.h"

#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>

#include <gtest/gtest.h>

#include <memory>

namespace sixtrace::test {
namespace {

class UsbByHand : public ::testing::Test {
protected:
    UsbByHand() {
        applyLook(*qApp);
        model->LanguageId = 1;
        field("Text1").setText(u"D2611210312.bin"_s);
        field("Text2").setText(folder.filePath(u"D2611210312.bin"_s));
    }
    [[nodiscard]] QLineEdit& field(const char* name) { return *window.findChild<QLineEdit*>(QString::fromUtf8(name)); }
    [[nodiscard]] QPushButton& start() { return *window.findChild<QPushButton*>(u"Command4"_s); }
    [[nodiscard]] QProgressBar& bar() { return *window.findChild<QProgressBar*>(u"ProgressBar1"_s); }
    [[nodiscard]] QString target() { return field("Text2").text(); }
    [[nodiscard]] QByteArray stored(const char* name = "D2611210312.bin") const {
        QFile file(folder.filePath(QString::fromUtf8(name)));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }
    /// Starts with the window shown, so that a test can see it close.
    void click() {
        window.show();
        window.Command4_Click();
    }
    /// Runs `work` when events run next after the read of that index. The header is read 0.
    void atYieldAfter(int wanted, const std::function<void()>& work) {
        link.onRead = [this, wanted, work](int read) {
            if (read == wanted) {
                QTimer::singleShot(0, &window, work);
            }
        };
    }

    QTemporaryDir folder;
    ScriptedLink link;
    ScriptedDialogs dialogs;
    std::unique_ptr<publicM> model = std::make_unique<publicM>();
    TransferGate gate;
    std::vector<TransferEnd> told;
    FrmUSB window{*model, dialogs, link, gate, [this](const TransferReport& report) { told.push_back(report.end); }};
};

TEST_F(UsbByHand, ALengthBelow64HasNoBlocksAndOneShortRead) {
    link.stream = ScriptedLink::transfer("capture");
    click();
    EXPECT_EQ(link.calls, (QStringList{u"InitializeTt 0"_s, u"WriteThread START"_s, u"ReadThread 12"_s,
                                       u"ReadThread 7"_s, u"closeTt 0"_s}));
    EXPECT_EQ(bar().maximum(), 1);
    EXPECT_EQ(field("Text5").text(), u"0"_s);
    EXPECT_EQ(field("Text6").text(), u"7"_s);
    EXPECT_EQ(stored(), QByteArray("capture\0", 8));
    EXPECT_EQ(model->ReceiveResult, 1);
    EXPECT_EQ(model->ReceivedFile, target());
    EXPECT_FALSE(window.isVisible());
    EXPECT_FALSE(window.UsbBusy());
}

TEST_F(UsbByHand, ALengthOfWholeBlocksAsksForZeroBytesAtTheEnd) {
    const QByteArray content(128, 'w');
    link.stream = ScriptedLink::transfer(content);
    int yields = 0;
    link.onRead = [&](int read) {
        EXPECT_FALSE(start().isEnabled()) << "no second start while one runs";
        EXPECT_TRUE(window.UsbBusy());
        EXPECT_TRUE(gate.held());
        if (read > 0) {
            QTimer::singleShot(0, &window, [&yields] { ++yields; });
        }
    };
    click();
    EXPECT_FALSE(gate.held());
    EXPECT_TRUE(start().isEnabled());
    EXPECT_EQ(link.calls.mid(2), (QStringList{u"ReadThread 12"_s, u"ReadThread 64"_s, u"ReadThread 64"_s,
                                              u"ReadThread 0"_s, u"closeTt 0"_s}));
    EXPECT_EQ(bar().maximum(), 2);
    EXPECT_EQ(bar().value(), 1);
    EXPECT_EQ(field("Text5").text(), u"128"_s);
    EXPECT_EQ(yields, 2);
    EXPECT_EQ(stored(), content + '\0');
}

TEST_F(UsbByHand, TheFileIsOneByteLongerThanTheLengthInTheHeader) {
    for (const int length : {0, 1, 63, 64, 65, 70000}) {
        QFile::remove(target());
        link.stream = ScriptedLink::transfer(QByteArray(length, 'd'));
        click();
        EXPECT_EQ(stored(), QByteArray(length, 'd') + '\0');
    }
}

TEST_F(UsbByHand, AnExistingLongerFileKeepsItsTail) {
    QFile file(target());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write("old content"), 11);
    file.close();
    link.stream = ScriptedLink::transfer("new");
    click();
    EXPECT_EQ(stored(), QByteArray("new\0content", 11)); // the zero byte after the data is written too
}

TEST_F(UsbByHand, AThirdHeaderByteOf128OrMoreTakesTheErrorPath) {
    link.stream = ScriptedLink::transfer({});
    link.stream[2] = '\x80';
    click();
    EXPECT_EQ(dialogs.messages, QStringList{u"错误代码:6    Overflow"_s});
    EXPECT_EQ(dialogs.messageIcons.front(), MessageIcon::Plain);
    EXPECT_EQ(link.calls.last(), u"closeTt 1"_s);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(model->ReceiveResult, 0);
    EXPECT_EQ(stored(), "(no file)");
}

TEST_F(UsbByHand, ABitmapGoesToThePathWithBmpInPlaceOfBin) {
    link.stream = ScriptedLink::transfer("BM", 1);
    click();
    EXPECT_EQ(field("Text1").text(), u"D2611210312.bmp"_s);
    EXPECT_TRUE(target().endsWith(u"D2611210312.bmp"_s));
    EXPECT_EQ(model->ReceivedFile, target());
    EXPECT_EQ(stored("D2611210312.bmp"), QByteArray("BM\0", 3));
}

TEST_F(UsbByHand, TextsShorterThanThreeCharactersFailTheBitmapsRenaming) {
    for (const auto& [name, pathText] : {std::pair("ab", "long.bin"), std::pair("long.bin", "ab")}) {
        dialogs.messages.clear();
        field("Text1").setText(QString::fromUtf8(name));
        field("Text2").setText(QString::fromUtf8(pathText));
        link.stream = ScriptedLink::transfer("BM", 1);
        click();
        EXPECT_EQ(dialogs.messages, QStringList{u"错误代码:5    Invalid procedure call or argument"_s});
    }
}

TEST_F(UsbByHand, ALinkThatDoesNotOpenIsToldInTheLanguageAndTheFormStays) {
    link.opens = false;
    click();
    model->LanguageId = 0;
    click();
    EXPECT_EQ(dialogs.messages, (QStringList{u"The meter open faild.Check the USB cable then reconect the system.."_s,
                                             u"设备打不开，请检查USB连线是否正常，重新接入设备！"_s}));
    EXPECT_EQ(dialogs.messageIcons.front(), MessageIcon::Information);
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(start().isEnabled());
    EXPECT_EQ(link.calls, (QStringList{u"InitializeTt 0"_s, u"InitializeTt 0"_s}));
}

TEST_F(UsbByHand, AFailedBlockIsToldTheFileStaysEmptyAndAnotherTryWorks) {
    const QByteArray content(200, 'c');
    link.stream = ScriptedLink::transfer(content);
    link.failingRead = 2;
    click();
    EXPECT_EQ(dialogs.messages,
              QStringList{u"The data received is error.Check the USB cable then restart to receive."_s});
    EXPECT_EQ(dialogs.messageIcons.front(), MessageIcon::Information);
    EXPECT_FALSE(window.UsbBusy());
    EXPECT_EQ(link.calls.last(), u"closeTt 1"_s);
    EXPECT_EQ(stored(), "");
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(start().isEnabled());
    EXPECT_EQ(model->ReceiveResult, 0);

    link.failingRead.reset();
    link.stream = ScriptedLink::transfer(content);
    click();
    EXPECT_EQ(stored(), content + '\0');
    EXPECT_FALSE(window.isVisible());
}

TEST_F(UsbByHand, AFailedHeaderIsToldInChineseAndNoFileIsMade) {
    model->LanguageId = 0;
    click();
    EXPECT_EQ(dialogs.messages, QStringList{u"数据接收错误，请检查USB连线是否正常，重新开始接收！"_s});
    EXPECT_EQ(stored(), "(no file)");
}

TEST_F(UsbByHand, AFailedShortReadGoesUnnoticed) {
    link.stream = ScriptedLink::transfer(QByteArray(70, 'c'));
    link.failingRead = 2;
    click();
    EXPECT_TRUE(dialogs.messages.isEmpty());
    EXPECT_EQ(stored(), QByteArray(64, 'c') + QByteArray(7, '\0'));
    EXPECT_EQ(model->ReceiveResult, 1);
}

TEST_F(UsbByHand, ACancelBetweenTwoBlocksClosesWaitsAndRecoversTheLink) {
    link.stream = ScriptedLink::transfer(QByteArray(640, 'c'));
    atYieldAfter(3, [this] { window.CancelButton_Click(); });
    click();
    EXPECT_EQ(link.calls.mid(6),
              (QStringList{u"closeTt 0"_s, u"InitializeTt 1"_s, u"closeTt 1"_s, u"ReadThread 64"_s}));
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(told, std::vector{TransferEnd::Cancelled});
    EXPECT_TRUE(dialogs.messages.isEmpty());
    EXPECT_EQ(model->ReceiveResult, 0);
    EXPECT_EQ(stored(), "");

    link.onRead = nullptr;
    link.stream = ScriptedLink::transfer("next");
    click();
    EXPECT_EQ(stored(), QByteArray("next\0", 5));
}

TEST_F(UsbByHand, TheFileIsOpenDuringATransferAndClosedHoweverItEnds) {
    atYieldAfter(1, [this] { EXPECT_TRUE(isOpenHere(target())); });
    link.stream = ScriptedLink::transfer(QByteArray(128, 'c'));
    click();
    EXPECT_FALSE(isOpenHere(target())) << "after the end";

    link.stream = ScriptedLink::transfer(QByteArray(128, 'c'));
    link.failingRead = link.reads + 2;
    click();
    EXPECT_EQ(dialogs.messages.size(), 1);
    EXPECT_FALSE(isOpenHere(target())) << "after a failure";

    link.failingRead.reset();
    link.stream = ScriptedLink::transfer(QByteArray(128, 'c'));
    int pauses = 0;
    atYieldAfter(link.reads + 1, [this, &pauses] {
        QTimer::singleShot(0, &window, [this, &pauses] {
            ++pauses;
            EXPECT_EQ(link.calls.last(), u"closeTt 0"_s) << "the pause comes before the recovery";
            EXPECT_FALSE(isOpenHere(target())) << "before the pause of a cancel";
        });
        window.CancelButton_Click();
    });
    click();
    EXPECT_EQ(pauses, 1);
}

TEST_F(UsbByHand, ACancelAfterTheLastWholeBlockEndsQuietly) {
    link.stream = ScriptedLink::transfer(QByteArray(128, 'c'));
    atYieldAfter(2, [this] { window.CancelButton_Click(); });
    click();
    EXPECT_TRUE(dialogs.messages.isEmpty());
    EXPECT_EQ(model->ReceiveResult, 0);
    EXPECT_EQ(stored(), "");
    EXPECT_FALSE(window.UsbBusy());
}

TEST_F(UsbByHand, ACancelWithoutATransferLeavesTheLinkAlone) {
    model->ReceiveResult = 1;
    window.CancelButton_Click();
    EXPECT_TRUE(link.calls.isEmpty());
    EXPECT_EQ(model->ReceiveResult, 0);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(UsbByHand, ACancelWithoutATransferDoesNotSpoilTheNextOne) {
    window.CancelButton_Click();
    link.stream = ScriptedLink::transfer(QByteArray(100, 'c'));
    click();
    EXPECT_EQ(stored(), QByteArray(100, 'c') + '\0');
    EXPECT_EQ(model->ReceiveResult, 1);

    // It does not hide a failure either.
    window.CancelButton_Click();
    link.stream.clear();
    click();
    EXPECT_EQ(dialogs.messages.size(), 1);
}

TEST_F(UsbByHand, ARunTimeErrorLeavesTheWindowBusySoThatTheNextCancelPutsTheLinkInOrder) {
    link.stream = ScriptedLink::transfer({});
    link.stream[2] = '\x80';
    click();
    EXPECT_TRUE(window.UsbBusy());
    EXPECT_FALSE(gate.held());
    EXPECT_EQ(told, std::vector{TransferEnd::Error});
    link.calls.clear();
    window.CancelButton_Click();
    EXPECT_EQ(link.calls, (QStringList{u"closeTt 0"_s, u"InitializeTt 1"_s, u"closeTt 1"_s}));
    EXPECT_FALSE(window.UsbBusy());
    EXPECT_TRUE(start().isEnabled());
}

TEST_F(UsbByHand, AStartDuringARunningTransferDoesNothing) {
    const auto other = gate.enter();
    click();
    EXPECT_TRUE(link.calls.isEmpty());
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(start().isEnabled());
    EXPECT_TRUE(dialogs.messages.isEmpty());
}

TEST_F(UsbByHand, AStartEndsATransferThatTheUserHasGivenUp) {
    const auto other = gate.enter();
    bool released = false;
    other->onEnd([&released] { released = true; });
    gate.giveUp();
    link.stream = ScriptedLink::transfer("capture");
    click();
    EXPECT_TRUE(other->ended());
    EXPECT_TRUE(released);
    EXPECT_EQ(model->ReceiveResult, 1);
    EXPECT_EQ(told, std::vector{TransferEnd::Finished});
}

} // namespace
} // namespace sixtrace::test
