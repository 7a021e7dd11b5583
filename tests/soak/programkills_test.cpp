// SPDX-License-Identifier: MIT
// The built programs, killed at any moment.
#include "capture/scenes.h"
#include "soak/companionfolder.h"
#include "support/strings.h"

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
        bring({u"kqx"_s, u"kqx-desktop"_s, u"libttdll.so"_s, u"ttdll.ini"_s});
        serve();
        ASSERT_TRUE(QDir(folder.path()).mkdir(u"got"_s));
        const QString target = path(u"got/one.bin"_s);
        const QStringList arguments =
            QStringList{u"fetch"_s, u"--force"_s, u"-o"_s, target, u"--timeout"_s, u"2"_s} + link;
        // Each fetch brings the next capture, whether or not the last one was received whole.
        QSet<QByteArray> captures;
        for (std::uint32_t seed = 1; seed <= 3 * kKills; ++seed) {
            captures.insert(captureBytes(*captureForm("V11"), *sceneBlocks(u"noise"_s, seed)) + tail);
        }
        Moments moments(duration([&] { ASSERT_EQ(runs(u"kqx"_s, arguments), 0); }) * 4 / 5);
        int newFiles = 0;
        QByteArray before = contentOf(target);
        ASSERT_TRUE(captures.contains(before));
        for (int i = 0; i < kKills; ++i) {
            killRun(u"kqx"_s, arguments, moments.next());
            const QByteArray found = contentOf(target);
            ASSERT_TRUE(captures.contains(found)) << kind << ' ' << i << ": " << found.size() << " bytes";
            newFiles += found == before ? 0 : 1;
            before = found;
        }
        // A kill may leave the lock file of the serial port empty. Such a lock counts for half a minute.
        int code = runs(u"kqx"_s, arguments);
        for (int attempt = 0; code != 0 && attempt < 45; ++attempt) {
            QThread::sleep(1);
            code = runs(u"kqx"_s, arguments);
        }
        EXPECT_EQ(code, 0) << "the next fetch succeeds";
        EXPECT_TRUE(captures.contains(contentOf(target)));
        EXPECT_NE(contentOf(target), before);
        const QStringList left = leftovers(path(u"got"_s), {u"one.bin"_s});
        tell(kind, kKills, newFiles, left.size());
        EXPECT_TRUE(left.isEmpty()) << "each fetch clears what killed ones have left: "
                                    << left.join(u' ').toStdString();
    }
};

TEST_F(ProgramKills, LeaveAFileFetchedOverTheSerialLineOldOrNew) {
    killFetching("fetch --serial", {u"--serial"_s, path(u"line"_s)}, {});
}

TEST_F(ProgramKills, LeaveAFileFetchedOverUsbOldOrNew) {
    killFetching("fetch --usb", {u"--usb"_s}, QByteArray(1, '\0'));
}

TEST_F(ProgramKills, LeaveWhatTheCompanionWritesOldOrNew) {
    bring({u"kqx"_s, u"kqx-desktop"_s, u"English.Lan"_s});
    put(u"capture.bin"_s, captureBytes(*captureForm("V11"), *sceneBlocks(u"sine"_s, 1)));
    const QList<QStringList> commands{{u"table"_s, u"capture.bin"_s, u"t.csv"_s},
                                      {u"table"_s, u"capture.bin"_s, u"t.txt"_s},
                                      {u"table"_s, u"capture.bin"_s, u"t.xls"_s},
                                      {u"screen"_s, u"capture.bin"_s, u"t.png"_s}};
    const QStringList known = leftovers(folder.path(), {});
    QStringList targets;
    int newFiles = 0;
    for (const QStringList& command : commands) {
        const QString target = path(command.last());
        targets.append(command.last());
        Moments moments(duration([&] { ASSERT_EQ(runs(u"kqx"_s, command), 0); }) / 2);
        const QByteArray whole = contentOf(target);
        for (int i = 0; i < kKills / 4; ++i) {
            put(command.last(), "old");
            killRun(u"kqx"_s, command, moments.next());
            const QByteArray found = contentOf(target);
            ASSERT_TRUE(found == "old" || found == whole) << command.last().toStdString() << ' ' << i;
            newFiles += found == "old" ? 0 : 1;
        }
        ASSERT_EQ(runs(u"kqx"_s, command), 0);
        EXPECT_EQ(contentOf(target), whole);
    }
    const QStringList left = leftovers(folder.path(), known + targets);
    tell("kqx table, screen", kKills, newFiles, left.size());
    EXPECT_LE(left.size(), kKills) << "more than one file a kill";
}

// The program writes its language at every start.
TEST_F(ProgramKills, LeaveTheSettingsWholeAndTheProgramStarts) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    bring({u"sixtrace"_s, u"English.Lan"_s, u"ChineseS.Lan"_s});
    const QByteArray mine("; mine\n[LineColor]\n0=255\n");
    constexpr int kStarts = 20;
    constexpr useconds_t kLongest = 1'000'000;
    const auto whole = [&] {
        const QByteArray found = contentOf(path(u"vkq.ini"_s));
        return found == mine || (found.startsWith(mine) && found.endsWith('\n') && found.contains("\n[Common]\n"));
    };
    for (int i = 0; i < kStarts; ++i) {
        put(u"vkq.ini"_s, mine);
        killRun(u"sixtrace"_s, {}, kLongest * static_cast<useconds_t>(i + 1) / kStarts);
        ASSERT_TRUE(whole()) << i << ": " << contentOf(path(u"vkq.ini"_s)).toStdString();
    }
    put(u"vkq.ini"_s, mine);
    QProcess last;
    last.start(path(u"sixtrace"_s), {});
    ASSERT_TRUE(last.waitForStarted());
    QElapsedTimer patience;
    patience.start();
    while (contentOf(path(u"vkq.ini"_s)) == mine && patience.elapsed() < 30000 && !last.waitForFinished(50)) {
    }
    EXPECT_EQ(last.state(), QProcess::Running) << last.readAllStandardError().toStdString();
    EXPECT_NE(contentOf(path(u"vkq.ini"_s)), mine) << "it came as far as its settings";
    EXPECT_TRUE(whole());
    last.kill();
    EXPECT_TRUE(last.waitForFinished(10000));
}

} // namespace
} // namespace sixtrace::test
