// SPDX-License-Identifier: MIT
// The result of kqx fetch for each fault of each link at the first, a middle and the last block. The test prints a
// table of the results.
#include "acquire/ptypeer.h"
#include "apps/fetchfixture.h"
#include "instrument/blocksender.h"
#include "support/strings.h"

#include <array>
#include <cstdio>

namespace sixtrace::test {
namespace {

constexpr int kSerialBlock = 1024;
constexpr int kUsbBlock = 64;

/// A fault at one place and the expected result.
struct Row {
    QByteArray fault;
    int exitCode = 0;
    QByteArray said; ///< part of the expected message
};

class FetchFaults : public Fetch {
protected:
    FetchFaults() {
        addSettings("ReadTimeout=300\n");
        m_size = capture("noise", 1).size();
    }
    [[nodiscard]] qsizetype size() const { return m_size; }
    [[nodiscard]] QByteArray came(qsizetype bytes) const {
        return QByteArray::number(bytes) + " of " + QByteArray::number(size()) + " bytes came";
    }
    /// The last block that holds data.
    [[nodiscard]] int lastBlock(int blockSize) const { return static_cast<int>((size() + blockSize - 1) / blockSize); }

    /// Runs the rows one after the other; capture n of the instrument has seed n.
    template<typename FetchOnce>
    void check(const char* link, const std::vector<Row>& rows, const QByteArray& tail, FetchOnce fetchOnce) {
        QByteArray script;
        for (const Row& row : rows) {
            script += row.fault + '\n';
        }
        serveScript(script);
        std::printf("%-7s %-18s %4s  %-8s %s\n", "link", "fault", "exit", "on disk", "message");
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const Row& row = rows[i];
            const Ran ran = fetchOnce();
            const QStringList files = got();
            std::printf("%-7s %-18s %4d  %-8s %s\n", link, row.fault.constData(), ran.exitCode,
                        files.isEmpty() ? "nothing" : "whole", ran.err.trimmed().constData());
            EXPECT_EQ(ran.exitCode, row.exitCode) << row.fault.constData() << ": " << ran.err.toStdString();
            EXPECT_TRUE(ran.err.contains(row.said)) << row.fault.constData() << ": " << ran.err.toStdString();
            if (ran.exitCode == 0) {
                ASSERT_EQ(files.size(), 1) << row.fault.constData();
                const QString file = path(u"got/"_s) + files.first();
                EXPECT_EQ(contentOf(file), capture("noise", static_cast<std::uint32_t>(i + 1)) + tail)
                    << row.fault.constData();
                ASSERT_TRUE(QFile::remove(file));
            } else {
                EXPECT_TRUE(files.isEmpty()) << row.fault.constData();
            }
            waitForLine();
        }
    }
    /// A line that was unplugged comes back by itself.
    void waitForLine() const {
        QElapsedTimer patience;
        patience.start();
        while (!QFileInfo::exists(path(u"line"_s)) && patience.elapsed() < 120000) {
            QThread::msleep(20);
        }
    }

private:
    qsizetype m_size = 0;
};

TEST_F(FetchFaults, OverTheSerialLineWhatIsAskedForAgainIsWholeAndAllElseIsNothing) {
    const int last = lastBlock(kSerialBlock);
    std::vector<Row> rows;
    for (const int block : {1, (last + 1) / 2, last}) {
        const QByteArray at = '@' + QByteArray::number(block);
        const QByteArray before = came(qsizetype{block - 1} * kSerialBlock);
        for (const char* healed : {"lost-block", "lost-byte", "crc", "complement", "sequence", "noise"}) {
            rows.push_back({healed + at, 0, ""});
        }
        // The repeated block is read as a header. The size in it is no number, so no later data is stored.
        rows.push_back({"repeat" + at, 1, "data came twice or beyond its size; " + came(0)});
        rows.push_back({"early-end" + at, 1, "the file is not whole; " + before});
        rows.push_back({"silence" + at, 1, "did not answer as it should; " + before});
        rows.push_back({"stop" + at, 1, "did not answer as it should; " + before});
        rows.push_back({"crc" + at + "x9", 1, "did not answer as it should; " + before});
        rows.push_back({"unplug" + at, 1, "the transfer failed: the serial line has gone; " + before});
    }
    rows.push_back({"wrong-length", 1, "the file is not whole; "});
    rows.push_back({"short-length", 1, "beyond its size"});
    rows.push_back({"silence@0", 3, "no instrument answers"});
    rows.push_back({"clean", 0, ""});
    check("serial", rows, {}, [this] { return fetchSerial({u"--timeout"_s, u"0.2"_s}); });
}

TEST_F(FetchFaults, ALateBlockOfTheSerialLineIsWaitedForWithinTheTimeOut) {
    const int last = lastBlock(kSerialBlock);
    std::vector<Row> rows;
    for (const int block : {1, (last + 1) / 2, last}) {
        rows.push_back({"late@" + QByteArray::number(block), 0, ""});
    }
    check("serial", rows, {}, [this] { return fetchSerial({u"--timeout"_s, u"20"_s}); });
}

TEST_F(FetchFaults, ABlockLaterThanTheTimeOutLeavesAWholeFileOrNone) {
    serveScript("late@1\nlate@5\nlate@9\n");
    for (std::uint32_t seed = 1; seed <= 3; ++seed) {
        const Ran ran = fetchSerial({u"--timeout"_s, u"0.3"_s});
        if (ran.exitCode == 0) {
            EXPECT_EQ(fetched(ran), capture("noise", seed));
            ASSERT_TRUE(QFile::remove(QString::fromUtf8(ran.out).trimmed()));
        } else {
            EXPECT_EQ(ran.exitCode, 1);
            EXPECT_TRUE(ran.err.contains(" bytes came")) << ran.err.toStdString();
        }
        EXPECT_TRUE(got().isEmpty());
        std::printf("serial  late beyond limit  %4d  %s\n", ran.exitCode, ran.err.trimmed().constData());
    }
}

TEST_F(FetchFaults, ARepeatedBlockThatReadsAsAHeaderOfTheSameSizeIsNoCapture) {
    // 2461 bytes in three blocks. The first block begins like the header of a file of 2461 bytes, so its repeat starts
    // the file again, and the two blocks after it bring the other 1437 bytes.
    const QByteArray content = QByteArray("x\0"
                                          "2461\0",
                                          7) +
                               QByteArray(2454, '.');
    PtyPeer peer;
    peer.play([&content](PtyPeer& p) {
        BlockSender sender("CAP0000.bin", content, *parsePlan(u"repeat@1"_s));
        while (!sender.over()) {
            const auto byte = p.takeOne(60000);
            if (!byte) {
                return;
            }
            p.send(sender.answer(*byte));
        }
    });
    const Ran ran = fetch({u"--serial"_s, peer.location(), u"-o"_s, path(u"got"_s), u"--timeout"_s, u"20"_s});
    EXPECT_EQ(ran.exitCode, 1);
    EXPECT_TRUE(ran.err.contains("the file is damaged, as data came twice or beyond its size; 1437 of 2461 bytes came"))
        << ran.err.toStdString();
    EXPECT_TRUE(got().isEmpty());
}

TEST_F(FetchFaults, OverUsbWhatIsNotWholeIsNothing) {
    const int last = lastBlock(kUsbBlock);
    const QByteArray damaged = "the file is damaged, as data came twice or beyond its size";
    std::vector<Row> rows;
    for (const int block : {1, (last + 1) / 2, last}) {
        const QByteArray at = '@' + QByteArray::number(block);
        const qsizetype before = qsizetype{block - 1} * kUsbBlock;
        const qsizetype blockSize = std::min<qsizetype>(kUsbBlock, size() - before);
        rows.push_back({"lost-block" + at, 1, came(size() - blockSize)});
        rows.push_back({"lost-byte" + at, 1, came(size() - 1)});
        rows.push_back({"repeat" + at, 1, damaged});
        rows.push_back({"noise" + at, 1, damaged});
        rows.push_back({"late" + at, 1, came(before)});
        rows.push_back({"early-end" + at, 1, came(before)});
        rows.push_back({"silence" + at, 1, came(before)});
        rows.push_back({"stop" + at, 1, came(before + blockSize / 2)});
        rows.push_back({"unplug" + at, 1, came(before)});
    }
    rows.push_back({"wrong-length", 1, " of " + QByteArray::number(size() + 1000) + " bytes came"});
    rows.push_back({"short-length", 1, damaged});
    rows.push_back({"silence@0", 3, "no instrument answers"});
    rows.push_back({"clean", 0, ""});
    check("usb", rows, QByteArray(1, '\0'), [this] { return fetchUsb(); });
}

} // namespace
} // namespace sixtrace::test
