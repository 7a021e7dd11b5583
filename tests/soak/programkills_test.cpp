// SPDX-License-Identifier: MIT
// The built programs, killed at any moment.
#include "capture/scenes.h"
#include "soak/companionfolder.h"

#include <QElapsedTimer>
#include <QSet>
#include <QThread>

namespace sixtrace::test {
namespace {

class ProgramKills : public CompanionFolder {
protected:
    /// Runs a program of the folder to its end and returns its exit code.
    [[nodiscard]] int runs(const QString& program, const QStringList& arguments) const {
        QProcess process;
        process.setWorkingDirectory(folder.path());
        process.start(path(program), arguments);
        return process.waitForFinished(60000) && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }
    /// Starts a program of the folder and kills it after so many microseconds, unless it has ended before.
    void killRun(const QString& program, const QStringList& arguments, useconds_t moment) const {
        QProcess process;
        process.setWorkingDirectory(folder.path());
        process.setStandardOutputFile(QProcess::nullDevice());
        process.setStandardErrorFile(QProcess::nullDevice());
        process.start(path(program), arguments);
        ASSERT_TRUE(process.waitForStarted());
        ::usleep(moment);
        process.kill();
        ASSERT_TRUE(process.waitForFinished(10000));
        ASSERT_TRUE(process.exitStatus() == QProcess::CrashExit || process.exitCode() <= 3) << process.exitCode();
    }
    void killFetching(const char* kind, const QStringList& link, const QByteArray& tail) {
        bring({text("kqx"), text("kqx-desktop"), text("libttdll.so"), text("ttdll.ini")});
        serve();
        ASSERT_TRUE(QDir(folder.path()).mkdir(text("got")));
        const QString target = path(text("got/one.bin"));
        const QStringList arguments =
            QStringList{text("fetch"), text("--force"), text("-o"), target, text("--timeout"), text("2")} + link;
        // Each fetch brings the next capture, whether or not the last one was received whole.
        QSet<QByteArray> captures;
        for (std::uint32_t seed = 1; seed <= 3 * kKills; ++seed) {
            captures.insert(captureBytes(*captureForm("V11"), *sceneBlocks(text("noise"), seed)) + tail);
        }
        Moments moments(duration([&] { ASSERT_EQ(runs(text("kqx"), arguments), 0); }) * 4 / 5);
        int newFiles = 0;
        QByteArray before = contentOf(target);
        ASSERT_TRUE(captures.contains(before));
        for (int i = 0; i < kKills; ++i) {
            killRun(text("kqx"), arguments, moments.next());
            const QByteArray found = contentOf(target);
            ASSERT_TRUE(captures.contains(found)) << kind << ' ' << i << ": " << found.size() << " bytes";
            newFiles += found == before ? 0 : 1;
            before = found;
        }
        // A kill may leave the lock file of the serial port empty. Such a lock counts for half a minute.
        int code = runs(text("kqx"), arguments);
        for (int attempt = 0; code != 0 && attempt < 45; ++attempt) {
            QThread::sleep(1);
            code = runs(text("kqx"), arguments);
        }
        EXPECT_EQ(code, 0) << "the next fetch succeeds";
        EXPECT_TRUE(captures.contains(contentOf(target)));
        EXPECT_NE(contentOf(target), before);
        const QStringList left = leftovers(path(text("got")), {text("one.bin")});
        tell(kind, kKills, newFiles, left.size());
        EXPECT_TRUE(left.isEmpty()) << "each fetch clears what killed ones have left: "
                                    << left.join(u' ').toStdString();
    }
};

TEST_F(ProgramKills, LeaveAFileFetchedOverTheSerialLineOldOrNew) {
    killFetching("fetch --serial", {text("--serial"), path(text("line"))}, {});
}

TEST_F(ProgramKills, LeaveAFileFetchedOverUsbOldOrNew) {
    killFetching("fetch --usb", {text("--usb")}, QByteArray(1, '\0'));
}

TEST_F(ProgramKills, LeaveWhatTheCompanionWritesOldOrNew) {
    bring({text("kqx"), text("kqx-desktop"), text("English.Lan")});
    put(text("capture.bin"), captureBytes(*captureForm("V11"), *sceneBlocks(text("sine"), 1)));
    const QList<QStringList> commands{{text("table"), text("capture.bin"), text("t.csv")},
                                      {text("table"), text("capture.bin"), text("t.txt")},
                                      {text("table"), text("capture.bin"), text("t.xls")},
                                      {text("screen"), text("capture.bin"), text("t.png")}};
    const QStringList known = leftovers(folder.path(), {});
    QStringList targets;
    int newFiles = 0;
    for (const QStringList& command : commands) {
        const QString target = path(command.last());
        targets.append(command.last());
        Moments moments(duration([&] { ASSERT_EQ(runs(text("kqx"), command), 0); }) / 2);
        const QByteArray whole = contentOf(target);
        for (int i = 0; i < kKills / 4; ++i) {
            put(command.last(), "old");
            killRun(text("kqx"), command, moments.next());
            const QByteArray found = contentOf(target);
            ASSERT_TRUE(found == "old" || found == whole) << command.last().toStdString() << ' ' << i;
            newFiles += found == "old" ? 0 : 1;
        }
        ASSERT_EQ(runs(text("kqx"), command), 0);
        EXPECT_EQ(contentOf(target), whole);
    }
    const QStringList left = leftovers(folder.path(), known + targets);
    tell("kqx table, screen", kKills, newFiles, left.size());
    EXPECT_LE(left.size(), kKills) << "more than one file a kill";
}

// The program writes its language at every start.
TEST_F(ProgramKills, LeaveTheSettingsWholeAndTheProgramStarts) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    bring({text("sixtrace"), text("English.Lan"), text("ChineseS.Lan")});
    const QByteArray mine("; mine\n[LineColor]\n0=255\n");
    constexpr int kStarts = 20;
    constexpr useconds_t kLongest = 1'000'000;
    const auto whole = [&] {
        const QByteArray found = contentOf(path(text("vkq.ini")));
        return found == mine || (found.startsWith(mine) && found.endsWith('\n') && found.contains("\n[Common]\n"));
    };
    for (int i = 0; i < kStarts; ++i) {
        put(text("vkq.ini"), mine);
        killRun(text("sixtrace"), {}, kLongest * static_cast<useconds_t>(i + 1) / kStarts);
        ASSERT_TRUE(whole()) << i << ": " << contentOf(path(text("vkq.ini"))).toStdString();
    }
    put(text("vkq.ini"), mine);
    QProcess last;
    last.start(path(text("sixtrace")), {});
    ASSERT_TRUE(last.waitForStarted());
    QElapsedTimer patience;
    patience.start();
    while (contentOf(path(text("vkq.ini"))) == mine && patience.elapsed() < 30000 && !last.waitForFinished(50)) {
    }
    EXPECT_EQ(last.state(), QProcess::Running) << last.readAllStandardError().toStdString();
    EXPECT_NE(contentOf(path(text("vkq.ini"))), mine) << "it came as far as its settings";
    EXPECT_TRUE(whole());
    last.kill();
    EXPECT_TRUE(last.waitForFinished(10000));
}

} // namespace
} // namespace sixtrace::test
