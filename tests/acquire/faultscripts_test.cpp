// SPDX-License-Identifier: MIT
// Fault scripts from random seeds. The tests work out the result of each script from whole blocks, without the
// receiver's code.
#include "acquire/receivefixture.h"
#include "instrument/serialserver.h"
#include "instrument/usbserver.h"
#include "support/strings.h"

#include <fcntl.h>
#include <poll.h>
#include <random>
#include <unistd.h>

namespace sixtrace::test {
namespace {

constexpr int kSeeds = 300;
constexpr int kBlock = 1024;
constexpr int kMostRetries = 5;

/// A plan without repeated blocks, and its expected result.
struct Case {
    FetchPlan plan;
    int size = 0;
    bool aborts = false;
    int wholeBlocks = 0; ///< number of blocks that are accepted before it ends
};

int blocksOf(int size) {
    return (size + kBlock - 1) / kBlock;
}

/// Each of the counted faults costs one retry, and the block is sent again. A silent line costs all retries.
Case makeCase(unsigned seed) {
    std::mt19937 random(seed);
    const auto pick = [&random](int low, int high) {
        return low + static_cast<int>(random() % static_cast<unsigned>(high - low + 1));
    };
    constexpr std::array kCounted{FaultKind::Crc, FaultKind::Complement, FaultKind::Sequence, FaultKind::LostByte,
                                  FaultKind::LostBlock};
    Case made;
    made.size = pick(1, 12000);
    const int blocks = blocksOf(made.size);
    const int faults = pick(1, 6);
    for (int i = 0; i < faults; ++i) {
        const int block = pick(0, blocks);
        const int kind = pick(0, 9);
        Fault fault{FaultKind::Crc, block, pick(1, 5)};
        if (kind < 7) {
            fault.kind = kCounted[static_cast<std::size_t>(pick(0, 4))];
        } else if (kind == 7) {
            fault.kind = FaultKind::Noise;
        } else {
            fault.kind = kind == 8 ? FaultKind::Stop : FaultKind::Silence;
            fault.times = 1;
        }
        if (made.plan.at(fault.kind, block) != nullptr) {
            continue;
        }
        made.plan.faults.push_back(fault);
    }
    // The sender looks for faults in this order: those that end all sending, then a lost block, then damages, which all
    // happen to the same transmission, and noise, which hides the damages after it.
    for (int block = 0; block <= blocks && !made.aborts; ++block) {
        const auto times = [&made, block](FaultKind kind) {
            const Fault* fault = made.plan.at(kind, block);
            return fault == nullptr ? 0 : fault->times;
        };
        if (times(FaultKind::Stop) > 0 || times(FaultKind::Silence) > 0) {
            made.aborts = true;
        }
        int damages = std::max({times(FaultKind::Crc), times(FaultKind::Complement), times(FaultKind::Sequence),
                                times(FaultKind::LostByte)});
        const int noise = times(FaultKind::Noise);
        // Of the transmissions after the lost ones, the first `noise` fail without being counted.
        const int countedFailures = times(FaultKind::LostBlock) + std::max(0, damages - noise);
        if (countedFailures >= kMostRetries) {
            made.aborts = true;
        }
        if (!made.aborts) {
            made.wholeBlocks = block;
        }
    }
    return made;
}

class FaultScripts : public ReceiveFixture {};

TEST_F(FaultScripts, ThreeHundredSeedsEndInTheRightFileOrTheRightAbortAndTheNextTransferIsClean) {
    int aborted = 0;
    for (unsigned seed = 1; seed <= kSeeds; ++seed) {
        SCOPED_TRACE(seed);
        const Case made = makeCase(seed);
        const QByteArray content = pattern(made.size, static_cast<int>(seed));
        const QString name = u"seed%1.bin"_s.arg(seed);
        form.text2 = path(name);
        port.sent.clear();
        port.waiting.clear();
        BlockSender sender("capture.bin", content, made.plan);
        connect(sender);
        const Result<std::int32_t> result = receive.YModemReceive();
        ASSERT_TRUE(result.ok());
        if (made.aborts) {
            ++aborted;
            EXPECT_EQ(result.value(), -1);
            EXPECT_TRUE(port.sent.endsWith("\x12\x12\x12\x12\x12\x08\x08\x08\x08\x08"));
            const QByteArray written = QFile::exists(path(name)) ? stored(name) : QByteArray();
            EXPECT_EQ(written, content.left(made.wholeBlocks * kBlock));
        } else {
            // Padding counts: 1024 for every block, 128 for a rest that fits such a block.
            const int rest = made.size % kBlock;
            const int padded = made.size - rest + (rest == 0 ? 0 : rest <= 128 ? 128 : kBlock);
            EXPECT_EQ(result.value(), padded);
            EXPECT_EQ(stored(name), content);
            EXPECT_TRUE(port.sent.endsWith("\x06"
                                           "\x06"
                                           "C"
                                           "\x06"));
        }
        expectCleanTransferWorks();
    }
    // Both results occur often.
    EXPECT_GT(aborted, 60);
    EXPECT_LT(aborted, 240);
}

TEST(UsbStream, TheHeaderHoldsTheLengthInThreeBytesAndTheKindInTheNinth) {
    EXPECT_EQ(usbHeaderBytes(0x010203, UsbContent::Capture), QByteArray("\x03\x02\x01\0\0\0\0\0\0\0\0\0", 12));
    EXPECT_EQ(usbHeaderBytes(63, UsbContent::Bitmap), QByteArray("\x3F\0\0\0\0\0\0\0\x01\0\0\0", 12));
}

TEST(FetchPlan, TellsAThousandBytesTooManyOrTooFewButNeverFewerThanNone) {
    EXPECT_EQ(parsePlan(u"crc"_s)->told(2461), 2461);
    EXPECT_EQ(parsePlan(u"wrong-length"_s)->told(2461), 3461);
    EXPECT_EQ(parsePlan(u"short-length"_s)->told(2461), 1461);
    EXPECT_EQ(parsePlan(u"short-length"_s)->told(999), 0);
}

TEST(SerialServer, ARequestCountsAsHeardSoThatAnInstrumentInUseIsNotIdle) {
    const QTemporaryDir place;
    const QString line = place.filePath(u"line"_s);
    for (const char* plan : {"crc@99", "unplug@0"}) {
        CaptureFeed feed(u"V11"_s, u"sine"_s, 1, *parsePlan(QString::fromLatin1(plan)), {});
        SerialServer server(feed, line, 0);
        ASSERT_TRUE(server.open().ok());
        EXPECT_FALSE(server.step()) << "no client has sent anything";
        const int client = ::open(QFile::encodeName(line).constData(), O_RDWR | O_NOCTTY | O_CLOEXEC);
        ASSERT_GE(client, 0);
        ASSERT_EQ(::write(client, "C", 1), 1);
        pollfd waiting = server.waitFor().value();
        ASSERT_EQ(::poll(&waiting, 1, 120000), 1);
        EXPECT_TRUE(server.step()) << plan;
        ::close(client);
    }
}

} // namespace
} // namespace sixtrace::test
