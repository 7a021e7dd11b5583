// SPDX-License-Identifier: MIT
#include "acquire/usbexchange.h"

#include "acquire/scriptedlink.h"
#include "support/openfiles.h"
#include "support/scripteddialogs.h"
#include "support/strings.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

using namespace sixtrace;

namespace {

class RecordedUsbForm final : public UsbForm {
public:
    QString text1 = text("D2611210312.bin");
    QString text2;
    std::int32_t text5 = -1;
    std::int32_t text6 = -1;
    std::int32_t barMaximum = -1;
    std::int32_t bar = -1;
    bool command4Enabled = true;
    int unloads = 0;
    int pauses = 0;
    int yields = 0;
    std::function<void()> onYield;

    QString Text1() override { return text1; }
    QString Text2() override { return text2; }
    void setText1(const QString& name) override { text1 = name; }
    void setText2(const QString& path) override { text2 = path; }
    void setText5(std::int32_t received) override { text5 = received; }
    void setText6(std::int32_t length) override { text6 = length; }
    void setBarMaximum(std::int32_t blocks) override { barMaximum = blocks; }
    void setBar(std::int32_t block) override { bar = block; }
    void setCommand4Enabled(bool enabled) override { command4Enabled = enabled; }
    void yield() override {
        ++yields;
        if (onYield) {
            onYield();
        }
    }
    std::function<void()> onPause;
    void waitForTimer1() override {
        ++pauses;
        if (onPause) {
            onPause();
        }
    }
    void unload() override { ++unloads; }
};

class UsbByHand : public ::testing::Test {
protected:
    UsbByHand() {
        form.text2 = folder.filePath(QStringLiteral("D2611210312.bin"));
        model->LanguageId = 1;
    }
    [[nodiscard]] QByteArray stored(const char* name = "D2611210312.bin") const {
        QFile file(folder.filePath(QString::fromLatin1(name)));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }

    QTemporaryDir folder;
    ScriptedLink link;
    RecordedUsbForm form;
    ScriptedDialogs dialogs;
    std::unique_ptr<publicM> model = std::make_unique<publicM>();
    UsbTransfer transfer{link, form, dialogs, *model};
};

TEST_F(UsbByHand, ALengthBelow64HasNoBlocksAndOneShortRead) {
    link.stream = ScriptedLink::transfer("capture");
    transfer.Command4_Click();
    EXPECT_EQ(link.calls, (QStringList{text("InitializeTt 0"), text("WriteThread START"), text("ReadThread 12"),
                                       text("ReadThread 7"), text("closeTt 0")}));
    EXPECT_EQ(form.barMaximum, 0);
    EXPECT_EQ(form.text5, 0);
    EXPECT_EQ(form.text6, 7);
    EXPECT_EQ(stored(), QByteArray("capture\0", 8));
    EXPECT_EQ(model->ReceiveResult, 1);
    EXPECT_EQ(model->ReceivedFile, form.text2);
    EXPECT_EQ(form.unloads, 1);
    EXPECT_FALSE(transfer.UsbBusy());
}

TEST_F(UsbByHand, ALengthOfWholeBlocksAsksForZeroBytesAtTheEnd) {
    const QByteArray content(128, 'w');
    link.stream = ScriptedLink::transfer(content);
    form.onYield = [this] {
        EXPECT_FALSE(form.command4Enabled) << "no second start while one runs";
        EXPECT_TRUE(transfer.UsbBusy());
    };
    transfer.Command4_Click();
    EXPECT_TRUE(form.command4Enabled);
    EXPECT_EQ(link.calls.mid(2), (QStringList{text("ReadThread 12"), text("ReadThread 64"), text("ReadThread 64"),
                                              text("ReadThread 0"), text("closeTt 0")}));
    EXPECT_EQ(form.barMaximum, 2);
    EXPECT_EQ(form.bar, 1);
    EXPECT_EQ(form.text5, 128);
    EXPECT_EQ(form.yields, 2);
    EXPECT_EQ(stored(), content + '\0');
}

TEST_F(UsbByHand, TheFileIsOneByteLongerThanTheLengthInTheHeader) {
    for (const int length : {0, 1, 63, 64, 65, 70000}) {
        QFile::remove(form.text2);
        link.stream = ScriptedLink::transfer(QByteArray(length, 'd'));
        transfer.Command4_Click();
        EXPECT_EQ(stored(), QByteArray(length, 'd') + '\0');
    }
}

TEST_F(UsbByHand, AnExistingLongerFileKeepsItsTail) {
    QFile file(form.text2);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write("old content"), 11);
    file.close();
    link.stream = ScriptedLink::transfer("new");
    transfer.Command4_Click();
    EXPECT_EQ(stored(), QByteArray("new\0content", 11)); // the zero byte behind the data is written too
}

TEST_F(UsbByHand, AThirdHeaderByteOf128OrMoreTakesTheErrorPath) {
    link.stream = ScriptedLink::transfer({});
    link.stream[2] = '\x80';
    transfer.Command4_Click();
    EXPECT_EQ(dialogs.messages, QStringList{text("错误代码:6    Overflow")});
    EXPECT_EQ(dialogs.messageIcons.front(), MessageIcon::Plain);
    EXPECT_EQ(link.calls.last(), text("closeTt 1"));
    EXPECT_EQ(form.unloads, 1);
    EXPECT_EQ(model->ReceiveResult, 0);
    EXPECT_EQ(stored(), "(no file)");
}

TEST(UsbLength, IsWorkedInSixteenAndThirtyTwoBitsAndReaches2147583) {
    const auto lengthOf = [](int low, int middle, int high) {
        UsbHeader header{};
        header[0] = static_cast<char>(low);
        header[1] = static_cast<char>(middle);
        header[2] = static_cast<char>(high);
        return usbLength(header);
    };
    EXPECT_EQ(lengthOf(1, 2, 3).value(), 1 + 512 + 3 * 65536);
    EXPECT_EQ(lengthOf(255, 0xC4, 0x20).value(), 2147583); // 0x20C4 is 8388
    EXPECT_EQ(lengthOf(0, 0xC5, 0x20).error().number, ErrorNumber::Overflow);
    EXPECT_EQ(lengthOf(0, 0, 127).error().number, ErrorNumber::Overflow);
    EXPECT_EQ(lengthOf(0, 0, 128).error().number, ErrorNumber::Overflow);
    EXPECT_EQ(lengthOf(255, 255, 255).error().number, ErrorNumber::Overflow);
}

TEST_F(UsbByHand, ABitmapGoesToThePathWithBmpInPlaceOfBin) {
    link.stream = ScriptedLink::transfer("BM", 1);
    transfer.Command4_Click();
    EXPECT_EQ(form.text1, text("D2611210312.bmp"));
    EXPECT_TRUE(form.text2.endsWith(text("D2611210312.bmp")));
    EXPECT_EQ(model->ReceivedFile, form.text2);
    EXPECT_EQ(stored("D2611210312.bmp"), QByteArray("BM\0", 3));
}

TEST_F(UsbByHand, TextsShorterThanThreeCharactersFailTheBitmapsRenaming) {
    for (const auto& [name, pathText] : {std::pair("ab", "long.bin"), std::pair("long.bin", "ab")}) {
        dialogs.messages.clear();
        form.text1 = text(name);
        form.text2 = text(pathText);
        link.stream = ScriptedLink::transfer("BM", 1);
        transfer.Command4_Click();
        EXPECT_EQ(dialogs.messages, QStringList{text("错误代码:5    Invalid procedure call or argument")});
    }
}

TEST_F(UsbByHand, ALinkThatDoesNotOpenIsToldInTheLanguageAndTheFormStays) {
    link.opens = false;
    transfer.Command4_Click();
    model->LanguageId = 0;
    transfer.Command4_Click();
    EXPECT_EQ(dialogs.messages,
              (QStringList{text("The meter open faild.Check the USB cable then reconect the system.."),
                           text("设备打不开，请检查USB连线是否正常，重新接入设备！")}));
    EXPECT_EQ(dialogs.messageIcons.front(), MessageIcon::Information);
    EXPECT_EQ(form.unloads, 0);
    EXPECT_TRUE(form.command4Enabled);
    EXPECT_EQ(link.calls, (QStringList{text("InitializeTt 0"), text("InitializeTt 0")}));
}

TEST_F(UsbByHand, AFailedBlockIsToldTheFileStaysEmptyAndAnotherTryWorks) {
    const QByteArray content(200, 'c');
    link.stream = ScriptedLink::transfer(content);
    link.failingRead = 2;
    transfer.Command4_Click();
    EXPECT_EQ(dialogs.messages,
              QStringList{text("The data received is error.Check the USB cable then restart to receive.")});
    EXPECT_EQ(dialogs.messageIcons.front(), MessageIcon::Information);
    EXPECT_FALSE(transfer.UsbBusy());
    EXPECT_EQ(link.calls.last(), text("closeTt 1"));
    EXPECT_EQ(stored(), "");
    EXPECT_EQ(form.unloads, 0);
    EXPECT_TRUE(form.command4Enabled);
    EXPECT_EQ(model->ReceiveResult, 0);

    link.failingRead = -1;
    link.stream = ScriptedLink::transfer(content);
    transfer.Command4_Click();
    EXPECT_EQ(stored(), content + '\0');
    EXPECT_EQ(form.unloads, 1);
}

TEST_F(UsbByHand, AFailedHeaderIsToldInChineseAndNoFileIsMade) {
    model->LanguageId = 0;
    transfer.Command4_Click();
    EXPECT_EQ(dialogs.messages, QStringList{text("数据接收错误，请检查USB连线是否正常，重新开始接收！")});
    EXPECT_EQ(stored(), "(no file)");
}

TEST_F(UsbByHand, AFailedShortReadGoesUnnoticed) {
    link.stream = ScriptedLink::transfer(QByteArray(70, 'c'));
    link.failingRead = 2;
    transfer.Command4_Click();
    EXPECT_TRUE(dialogs.messages.isEmpty());
    EXPECT_EQ(stored(), QByteArray(64, 'c') + QByteArray(7, '\0'));
    EXPECT_EQ(model->ReceiveResult, 1);
}

TEST_F(UsbByHand, ACancelBetweenTwoBlocksClosesWaitsAndRecoversTheLink) {
    link.stream = ScriptedLink::transfer(QByteArray(640, 'c'));
    form.onYield = [this] {
        if (form.yields == 3) {
            transfer.CancelButton_Click();
        }
    };
    transfer.Command4_Click();
    EXPECT_EQ(link.calls.mid(6),
              (QStringList{text("closeTt 0"), text("InitializeTt 1"), text("closeTt 1"), text("ReadThread 64")}));
    EXPECT_EQ(form.pauses, 1);
    EXPECT_EQ(form.unloads, 1);
    EXPECT_TRUE(dialogs.messages.isEmpty());
    EXPECT_EQ(model->ReceiveResult, 0);
    EXPECT_EQ(stored(), "");

    form.onYield = nullptr;
    link.stream = ScriptedLink::transfer("next");
    transfer.Command4_Click();
    EXPECT_EQ(stored(), QByteArray("next\0", 5));
}

TEST_F(UsbByHand, TheFileIsOpenDuringATransferAndClosedHoweverItEnds) {
    form.onYield = [this] { EXPECT_TRUE(isOpenHere(form.text2)); };
    link.stream = ScriptedLink::transfer(QByteArray(128, 'c'));
    transfer.Command4_Click();
    EXPECT_FALSE(isOpenHere(form.text2)) << "behind the end";

    link.stream = ScriptedLink::transfer(QByteArray(128, 'c'));
    link.failingRead = link.reads + 2;
    transfer.Command4_Click();
    EXPECT_EQ(dialogs.messages.size(), 1);
    EXPECT_FALSE(isOpenHere(form.text2)) << "behind a failure";

    link.failingRead = -1;
    link.stream = ScriptedLink::transfer(QByteArray(128, 'c'));
    form.onYield = [this] { transfer.CancelButton_Click(); };
    form.onPause = [this] { EXPECT_FALSE(isOpenHere(form.text2)) << "before the pause of a cancel"; };
    transfer.Command4_Click();
    EXPECT_EQ(form.pauses, 1);
}

TEST_F(UsbByHand, ACancelAfterTheLastWholeBlockEndsQuietly) {
    link.stream = ScriptedLink::transfer(QByteArray(128, 'c'));
    form.onYield = [this] {
        if (form.yields == 2) {
            transfer.CancelButton_Click();
        }
    };
    transfer.Command4_Click();
    EXPECT_TRUE(dialogs.messages.isEmpty());
    EXPECT_EQ(model->ReceiveResult, 0);
    EXPECT_EQ(stored(), "");
    EXPECT_FALSE(transfer.UsbBusy());
}

TEST_F(UsbByHand, ACancelWithoutATransferLeavesTheLinkAlone) {
    model->ReceiveResult = 1;
    transfer.CancelButton_Click();
    EXPECT_TRUE(link.calls.isEmpty());
    EXPECT_EQ(model->ReceiveResult, 0);
    EXPECT_EQ(form.unloads, 1);
}

TEST_F(UsbByHand, ACancelWithoutATransferDoesNotSpoilTheNextOne) {
    transfer.CancelButton_Click();
    link.stream = ScriptedLink::transfer(QByteArray(100, 'c'));
    transfer.Command4_Click();
    EXPECT_EQ(stored(), QByteArray(100, 'c') + '\0');
    EXPECT_EQ(model->ReceiveResult, 1);

    // Nor does it hide the failure of one.
    transfer.CancelButton_Click();
    link.stream.clear();
    transfer.Command4_Click();
    EXPECT_EQ(dialogs.messages.size(), 1);
}

class UsbByItself : public UsbByHand {
protected:
    [[nodiscard]] QString path() const { return folder.filePath(QStringLiteral("AutoGet.bin")); }
};

TEST_F(UsbByItself, TheResultOfTheOpenIsNotTestedAndTheContentByteNotLookedAt) {
    link.stream = ScriptedLink::transfer("BM", 1);
    EXPECT_EQ(getfromUSB(link, dialogs, *model, path()), AutoUsbEnding::Done);
    EXPECT_EQ(stored("AutoGet.bin"), QByteArray("BM\0", 3));
    EXPECT_EQ(model->ReceivedFile, path());
    EXPECT_EQ(model->ReceiveResult, 1);
    EXPECT_EQ(link.calls.last(), text("closeTt 0"));

    link.opens = false;
    link.calls.clear();
    EXPECT_EQ(getfromUSB(link, dialogs, *model, path()), AutoUsbEnding::Failed);
    EXPECT_EQ(link.calls, (QStringList{text("InitializeTt 0"), text("WriteThread START"), text("closeTt 1")}));
}

TEST_F(UsbByItself, AFailureIsToldAndClosesTheLink) {
    link.stream = ScriptedLink::transfer(QByteArray(200, 'c'));
    link.failingRead = 1;
    EXPECT_EQ(getfromUSB(link, dialogs, *model, path()), AutoUsbEnding::Failed);
    EXPECT_EQ(dialogs.messages,
              QStringList{text("The data received is error.Check the USB cable then restart to receive.")});
    EXPECT_EQ(dialogs.messageIcons.front(), MessageIcon::Information);
    EXPECT_EQ(link.calls.last(), text("closeTt 1"));
    EXPECT_EQ(model->ReceiveResult, 0);
    EXPECT_EQ(stored("AutoGet.bin"), "");
}

TEST_F(UsbByItself, AnOverflowOfTheLengthIsShownWithItsNumber) {
    link.stream = ScriptedLink::transfer({});
    link.stream[2] = '\xFF';
    EXPECT_EQ(getfromUSB(link, dialogs, *model, path()), AutoUsbEnding::Failed);
    EXPECT_EQ(dialogs.messages, QStringList{text("错误代码:6    Overflow")});
    EXPECT_EQ(dialogs.messageIcons.front(), MessageIcon::Plain);
    EXPECT_EQ(link.calls.last(), text("closeTt 1"));
}

TEST(TransferLibrary, ThatIsAbsentCountsAsFailed) {
    TtLibrary library(QDir::tempPath() + text("/no-such-folder/"));
    char byte = 0;
    EXPECT_EQ(library.InitializeTt(0), 0);
    EXPECT_NE(library.WriteThread("START", 5), 5);
    EXPECT_NE(library.ReadThread(&byte, 1), 1);
    library.closeTt(1);
}

} // namespace
