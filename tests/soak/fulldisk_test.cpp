// SPDX-License-Identifier: MIT
// The receivers on a full disk: they report it, and keep what they have written.
#include "acquire/receivefixture.h"
#include "acquire/scriptedlink.h"
#include "acquire/usbexchange.h"
#include "support/hardships.h"
#include "support/strings.h"

namespace sixtrace::test {
namespace {

class FullDisk : public ReceiveFixture {};

TEST_F(FullDisk, EndsASerialTransferWithItsErrorAndTheFileAsFarAsItFits) {
    const QByteArray content = pattern(5000);
    for (const rlim_t room : {rlim_t{0}, rlim_t{100}, rlim_t{1024}, rlim_t{1500}, rlim_t{4999}}) {
        QFile::remove(path(u"got.bin"_s));
        BlockSender sender("WAVE.bin", content, {});
        connect(sender);
        port.waiting.clear();
        const Result<std::int32_t> result = [&] {
            const SmallDisk disk(room);
            return receive.YModemReceive();
        }();
        ASSERT_FALSE(result.ok()) << room;
        EXPECT_EQ(result.error().code(), 61) << room;
        EXPECT_EQ(stored(), content.first(static_cast<qsizetype>(room))) << room;
    }
    expectCleanTransferWorks();
}

TEST_F(FullDisk, EndsAUsbTransferWithItsError) {
    const QByteArray content = pattern(5000);
    ScriptedLink link;
    link.InitializeTt(0);
    link.stream = ScriptedLink::transfer(content);
    const UsbJob job{.storeAt = [this](const UsbAnnounced&) -> Result<QString> { return path(u"got.bin"_s); }};
    TransferReport report;
    {
        const auto pass = receive.gate.enter();
        const SmallDisk disk(2000);
        report = exchangeUsb(*pass, link, job);
    }
    EXPECT_EQ(report.end, TransferEnd::Error);
    EXPECT_EQ(report.error.value().code(), 61);
    EXPECT_EQ(stored(), content.first(2000));
    link.stream = ScriptedLink::transfer(content);
    EXPECT_TRUE(exchangeUsb(*receive.gate.enter(), link, job).whole());
    EXPECT_EQ(stored(), content + '\0');
}

} // namespace
} // namespace sixtrace::test
