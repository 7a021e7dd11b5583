// SPDX-License-Identifier: MIT
#include "acquire/usbexchange.h"

#include "acquire/scriptedlink.h"
#include "support/strings.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace sixtrace::test {
namespace {

class UsbExchange : public ::testing::Test {
protected:
    UsbExchange() { link.InitializeTt(0); }

    TransferReport run(UsbJob more = {}) {
        more.storeAt = [this](const UsbAnnounced& found) -> Result<QString> {
            announced = found;
            return path;
        };
        const auto pass = gate.enter();
        return exchangeUsb(*pass, link, more);
    }
    [[nodiscard]] QByteArray stored() const {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }

    QTemporaryDir folder;
    QString path = folder.filePath(u"got.bin"_s);
    TransferGate gate;
    ScriptedLink link;
    UsbAnnounced announced;
};

TEST_F(UsbExchange, ReportsAWholeFileAndWhatTheHeaderAnnounced) {
    link.stream = ScriptedLink::transfer(QByteArray(130, 'd'));
    const TransferReport report = run();
    EXPECT_TRUE(report.whole());
    EXPECT_EQ(report.end, TransferEnd::Finished);
    EXPECT_EQ(report.announced, 130);
    EXPECT_EQ(report.stored, 130);
    EXPECT_EQ(report.path, path);
    EXPECT_FALSE(report.bitmap);
    EXPECT_EQ(announced.length, 130);
    EXPECT_EQ(announced.blocks, 2);
    EXPECT_EQ(stored(), QByteArray(130, 'd') + '\0');
    EXPECT_EQ(sentenceOf(report, Language::English), u"all 130 bytes came"_s);
    EXPECT_EQ(sentenceOf(report, Language::Chinese), u"接收完成，共 130 字节"_s);
}

TEST_F(UsbExchange, ALastReadThatComesShortIsFinishedButNotWhole) {
    link.stream = ScriptedLink::transfer(QByteArray(70, 'd')).chopped(4);
    const TransferReport report = run();
    EXPECT_EQ(report.end, TransferEnd::Finished);
    EXPECT_FALSE(report.whole());
    EXPECT_EQ(report.stored, 66);
    EXPECT_EQ(stored(), QByteArray(66, 'd') + QByteArray(5, '\0'));
    EXPECT_EQ(sentenceOf(report, Language::English), u"the file is not whole; 66 of 70 bytes came"_s);
    EXPECT_EQ(sentenceOf(report, Language::Chinese), u"文件不完整；收到 66 / 70 字节"_s);
}

TEST_F(UsbExchange, ABlockThatComesShortBreaksOffAndItsBytesCount) {
    link.stream = ScriptedLink::transfer(QByteArray(200, 'd')).chopped(100);
    const TransferReport report = run();
    EXPECT_EQ(report.end, TransferEnd::BrokenOff);
    EXPECT_EQ(report.announced, 200);
    EXPECT_EQ(report.stored, 100);
    EXPECT_EQ(stored(), "") << "data are written at the end only";
    EXPECT_EQ(sentenceOf(report, Language::English),
              u"the transfer broke off, as the instrument did not answer as it should; 100 of 200 bytes came"_s);
}

TEST_F(UsbExchange, WithoutAHeaderNothingIsAnnouncedAndNoFileIsMade) {
    const TransferReport report = run();
    EXPECT_EQ(report.end, TransferEnd::BrokenOff);
    EXPECT_EQ(report.announced, std::nullopt);
    EXPECT_TRUE(report.path.isEmpty());
    EXPECT_EQ(stored(), "(no file)");
    EXPECT_EQ(sentenceOf(report, Language::English),
              u"the transfer broke off, as the instrument did not answer as it should; no header came"_s);
}

TEST_F(UsbExchange, ALengthOfZeroIsNotWhole) {
    link.stream = ScriptedLink::transfer({});
    const TransferReport report = run();
    EXPECT_EQ(report.end, TransferEnd::Finished);
    EXPECT_FALSE(report.whole());
    EXPECT_EQ(sentenceOf(report, Language::English),
              u"the file is not whole, as the instrument told no size; 0 of 0 bytes came"_s);
}

TEST_F(UsbExchange, OneByteIsAFileAndWhatTheHeaderSaysOfItsKindIsReported) {
    link.stream = ScriptedLink::transfer("x", 1);
    const TransferReport picture = run();
    EXPECT_TRUE(picture.whole());
    EXPECT_TRUE(picture.bitmap);
    EXPECT_TRUE(announced.bitmap);
}

TEST_F(UsbExchange, TellsEachBlockThenLetsEventsRun) {
    link.stream = ScriptedLink::transfer(QByteArray(200, 'd'));
    QStringList steps;
    static_cast<void>(run({.storeAt = {},
                           .blockCame = [&steps](std::int32_t block) { steps << QString::number(block); },
                           .yield = [&steps] { steps << u"yield"_s; }}));
    EXPECT_EQ(steps, (QStringList{u"0"_s, u"yield"_s, u"1"_s, u"yield"_s, u"2"_s, u"yield"_s}));
}

TEST_F(UsbExchange, ACancelShowsAsAFailedReadOrAfterTheLastBlock) {
    bool cancelled = false;
    link.stream = ScriptedLink::transfer(QByteArray(200, 'd'));
    const auto cancelAtYield = [&](int wanted) {
        cancelled = false;
        int yields = 0;
        return run({.storeAt = {},
                    .cancelled = [&cancelled] { return cancelled; },
                    .yield =
                        [&cancelled, &yields, this, wanted] {
                            if (++yields == wanted) {
                                cancelled = true;
                                link.closeTt(0);
                            }
                        }})
            .end;
    };
    EXPECT_EQ(cancelAtYield(1), TransferEnd::Cancelled);
    EXPECT_EQ(stored(), "");
    link.InitializeTt(0);
    link.stream = ScriptedLink::transfer(QByteArray(200, 'd'));
    EXPECT_EQ(cancelAtYield(3), TransferEnd::Cancelled);
    EXPECT_EQ(stored(), "");
}

TEST_F(UsbExchange, ARunTimeErrorIsReportedWithItsNumber) {
    path = folder.filePath(u"no/such/got.bin"_s);
    link.stream = ScriptedLink::transfer(QByteArray(200, 'd'));
    const TransferReport report = run();
    EXPECT_EQ(report.end, TransferEnd::Error);
    ASSERT_TRUE(report.error);
    EXPECT_EQ(report.error->number, ErrorNumber::PathNotFound);
    EXPECT_EQ(sentenceOf(report, Language::English), u"the transfer failed: Path not found; 0 of 200 bytes came"_s);
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

TEST(TransferLibrary, ThatIsAbsentCountsAsFailed) {
    TtLibrary library(QDir::tempPath() + u"/no-such-folder/"_s);
    char byte = 0;
    EXPECT_EQ(library.InitializeTt(0), 0);
    EXPECT_NE(library.WriteThread("START", 5), 5);
    EXPECT_NE(library.ReadThread(&byte, 1), 1);
    library.closeTt(1);
}

} // namespace
} // namespace sixtrace::test
