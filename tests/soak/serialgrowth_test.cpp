// SPDX-License-Identifier: MIT
// Memory and handles of the serial receiver and its port over many transfers.
#include "acquire/ptypeer.h"
#include "acquire/receivefixture.h"
#include "platform/ports/mscomm.h"
#include "soak/growth.h"
#include "support/strings.h"

namespace sixtrace::test {
namespace {

class SerialGrowth : public ReceiveFixture {};

TEST_F(SerialGrowth, TransfersLeaveNothing) {
    const QByteArray content = pattern(700);
    int whole = 0;
    expectNoGrowth("serial transfers", 10'000, [&](int i) {
        FetchPlan plan;
        BlockSender sender("WAVE.bin", content, plan);
        connect(sender);
        if (i % 10 == 9) {
            port.answer = [](unsigned char) { return QByteArray(); }; // at times the instrument does not answer
        }
        const Result<std::int32_t> result = receive.YModemReceive();
        whole += result && result.value() > 0 ? 1 : 0;
        port.waiting.clear();
        port.sent.clear();
        port.sentAt.clear();
        form.text4History.clear();
    });
    EXPECT_EQ(whole, 9900);
    EXPECT_EQ(stored(), content);
}

TEST(PortGrowth, OpenedAndClosedPortsLeaveNothing) {
    const PtyPeer peer;
    MSComm port([&peer](int number) { return number == 3 ? peer.location() : QString(); });
    int opened = 0;
    expectNoGrowth("opened ports", 500, [&](int i) {
        static_cast<void>(port.setCommPort(i % 2 == 0 ? 3 : 4).ok());
        opened += port.setPortOpen(true) ? 1 : 0;
        static_cast<void>(port.setPortOpen(false));
    });
    EXPECT_EQ(opened, 275);
}

} // namespace
} // namespace sixtrace::test
