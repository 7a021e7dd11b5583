// SPDX-License-Identifier: MIT
// The receivers of the program write into the file under its final name. A killed transfer leaves what had arrived,
// followed by the rest of an old file that was longer, and nothing else.
#include "acquire/receivefixture.h"
#include "acquire/scriptedlink.h"
#include "acquire/usbexchange.h"
#include "soak/killing.h"
#include "support/scripteddialogs.h"
#include "support/strings.h"

#include <optional>

namespace sixtrace::test {
namespace {

/// How many bytes of `fresh` stand at the start of `found`, followed by the rest of `old`. Nothing if `found` is
/// anything else.
std::optional<qsizetype> takenOver(const QByteArray& found, const QByteArray& fresh, const QByteArray& old) {
    qsizetype taken = 0;
    while (taken < found.size() && taken < fresh.size() && found[taken] == fresh[taken]) {
        ++taken;
    }
    if (found.sliced(taken) != old.sliced(std::min(taken, old.size()))) {
        return std::nullopt;
    }
    return taken;
}

class ReceiveKills : public ReceiveFixture {
protected:
    static constexpr int kSize = 40'000;
    const QByteArray fresh = pattern(kSize, 5);
    // The old file differs from the new one in every byte, so that each byte shows where it comes from.
    const QByteArray old = [this] {
        QByteArray other = fresh + QByteArray(100, '!');
        std::transform(other.begin(), other.end(), other.begin(), [](char c) { return static_cast<char>(~c); });
        return other;
    }();

    template<typename Receive>
    void killReceiving(const char* kind, Receive receiveOne, const QByteArray& freshFile) {
        Moments moments(duration([&receiveOne] { receiveOne(0); }));
        ASSERT_EQ(stored(), freshFile);
        int whole = 0;
        int cut = 0;
        for (int i = 0; i < kKills; ++i) {
            const bool existed = i % 2 == 0;
            QFile::remove(path(u"got.bin"_s));
            if (existed) {
                store(u"got.bin"_s, old);
            }
            killWhile(
                [&receiveOne, i](int pass) {
                    if (pass > i) {
                        ::pause(); // after one transfer no other may repair the file
                    }
                    receiveOne(pass);
                },
                i, moments.next());
            const QByteArray before = existed ? old : QByteArray();
            const QByteArray found = existed || QFile::exists(path(u"got.bin"_s)) ? stored() : QByteArray();
            const auto taken = takenOver(found, freshFile, before);
            ASSERT_TRUE(taken) << kind << ' ' << i << ": " << found.size() << " bytes";
            whole += taken == freshFile.size() ? 1 : 0;
            cut += taken > 0 && taken < freshFile.size() ? 1 : 0;
        }
        tell(kind, kKills, whole, leftovers(folder.path(), {u"got.bin"_s}).size());
        std::cout << "[  SOAK    ] " << kind << ": " << cut << " as far as written\n";
        EXPECT_TRUE(leftovers(folder.path(), {u"got.bin"_s}).isEmpty());
        QFile::remove(path(u"got.bin"_s));
        receiveOne(0);
        EXPECT_EQ(stored(), freshFile) << "the next transfer is whole";
    }
};

TEST_F(ReceiveKills, LeaveASerialFileAsFarAsWritten) {
    killReceiving(
        "serial receive",
        [this](int) {
            BlockSender sender("WAVE.bin", fresh, {});
            connect(sender);
            static_cast<void>(receive.YModemReceive().ok());
        },
        fresh);
}

TEST_F(ReceiveKills, LeaveAUsbFileAsItWasOrWritten) {
    ScriptedLink link;
    killReceiving(
        "USB receive",
        [&](int) {
            link.stream = ScriptedLink::transfer(fresh);
            link.calls.clear();
            TransferGate gate;
            const auto pass = gate.enter();
            link.InitializeTt(0);
            static_cast<void>(exchangeUsb(*pass, link, {.storeAt = [this](const UsbAnnounced&) -> Result<QString> {
                return path(u"got.bin"_s);
            }}));
        },
        fresh + '\0');
}

} // namespace
} // namespace sixtrace::test
