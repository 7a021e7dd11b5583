// SPDX-License-Identifier: MIT
// kqx fetch against the simulated instrument, program against program.
#include "apps/fetchfixture.h"

#include "support/strings.h"

#include <set>
#include <sys/stat.h>

namespace sixtrace::test {
namespace {

TEST_F(Fetch, OverTheSerialLineBringsTheNextCaptureEveryTime) {
    serve({});
    for (std::uint32_t seed = 1; seed <= 3; ++seed) {
        const Ran ran = fetchSerial();
        EXPECT_EQ(ran.exitCode, 0) << ran.err.toStdString();
        EXPECT_EQ(fetched(ran), capture("noise", seed));
    }
    EXPECT_EQ(got().size(), 3);
}

TEST_F(Fetch, OverUsbBringsTheNextCaptureAndOneZeroByteBehindIt) {
    serve({});
    for (std::uint32_t seed = 1; seed <= 3; ++seed) {
        const Ran ran = fetchUsb();
        EXPECT_EQ(ran.exitCode, 0) << ran.err.toStdString();
        EXPECT_EQ(fetched(ran), capture("noise", seed) + '\0');
    }
}

TEST_F(Fetch, ANumberOfCapturesGetsANumberOfFilesNamedByDateAndTime) {
    serve({});
    const Ran ran = fetchUsb({u"--count"_s, u"4"_s, u"--every"_s, u"0"_s});
    EXPECT_EQ(ran.exitCode, 0);
    EXPECT_EQ(ran.out.count('\n'), 4);
    const QStringList files = got();
    EXPECT_EQ(files.size(), 4);
    for (const QString& file : files) {
        EXPECT_TRUE(file.startsWith(u'D') && file.endsWith(u".bin"_s)) << file.toStdString();
    }
    // The four files come within two minutes at most, so at least one of these minutes has two files.
    EXPECT_FALSE(files.filter(u"-2.bin"_s).isEmpty()) << files.join(u' ').toStdString();
}

TEST_F(Fetch, DamagedBlocksAreAskedForAgainAndTheFileIsRight) {
    serveScript("crc@1x2 complement@3 lost-byte@5 repeat@0 noise@2\n");
    const Ran ran = fetchSerial({u"--timeout"_s, u"0.3"_s});
    EXPECT_EQ(ran.exitCode, 0) << ran.err.toStdString();
    EXPECT_EQ(fetched(ran), capture("noise", 1));
}

TEST_F(Fetch, WhatGoesWrongOverTheSerialLineLeavesNoFileAndTheNextFetchIsClean) {
    serveScript("silence@2\nstop@3\ncrc@1x9\nearly-end@3\nwrong-length\n");
    for (int fault = 0; fault < 5; ++fault) {
        const Ran ran = fetchSerial({u"--timeout"_s, u"0.2"_s});
        EXPECT_EQ(ran.exitCode, 1) << fault;
        EXPECT_TRUE(ran.err.contains(" bytes came")) << ran.err.toStdString();
        EXPECT_TRUE(got().isEmpty()) << got().join(u' ').toStdString();
    }
    const Ran ran = fetchSerial();
    EXPECT_EQ(ran.exitCode, 0) << ran.err.toStdString();
    EXPECT_EQ(fetched(ran), capture("noise", 6));
}

TEST_F(Fetch, APulledPlugFailsAndTheLineComesBack) {
    serveScript("unplug@2\n");
    EXPECT_EQ(fetchSerial({u"--timeout"_s, u"0.1"_s}).exitCode, 1);
    EXPECT_TRUE(got().isEmpty());
    QElapsedTimer patience;
    patience.start();
    while (!QFileInfo::exists(path(u"line"_s)) && patience.elapsed() < 10000) {
        QThread::msleep(50);
    }
    EXPECT_EQ(fetchSerial().exitCode, 0);
}

TEST_F(Fetch, WhatGoesWrongOverUsbLeavesNoFileAndTheNextFetchIsClean) {
    addSettings("ReadTimeout=200\n");
    serveScript("silence@0\nstop@4\nunplug@2\nlost-block@1\nclean\n");
    for (int fault = 0; fault < 4; ++fault) {
        const Ran ran = fetchUsb();
        // Without a header kqx reports that there is no instrument. A lost block is noticed at the end.
        EXPECT_EQ(ran.exitCode, fault == 0 ? 3 : 1) << fault << ran.err.toStdString();
    }
    EXPECT_TRUE(got().isEmpty());
    EXPECT_TRUE(contentOf(path(u"ttdll.log"_s)).contains("the instrument is silent"));
    const Ran ran = fetchUsb();
    EXPECT_EQ(ran.exitCode, 0);
    EXPECT_EQ(fetched(ran), capture("noise", 5) + '\0');
}

TEST_F(Fetch, ABitmapIsStoredUnderItsOwnExtension) {
    serve({u"--fault"_s, u"bitmap"_s});
    for (const Ran& ran : {fetchSerial(), fetchUsb()}) {
        EXPECT_EQ(ran.exitCode, 4) << ran.err.toStdString();
        EXPECT_TRUE(ran.err.contains("a bitmap and no capture"));
        EXPECT_TRUE(ran.out.endsWith(".bmp\n"));
        EXPECT_TRUE(fetched(ran).startsWith("BM"));
    }
}

TEST_F(Fetch, WithoutAnInstrumentFailsAndTheLogSaysWhy) {
    const Ran usb = fetchUsb();
    EXPECT_EQ(usb.exitCode, 3);
    EXPECT_TRUE(usb.err.contains("The meter open faild"));
    EXPECT_TRUE(contentOf(path(u"ttdll.log"_s)).contains("usb:"));
    const Ran serial = fetchSerial();
    EXPECT_EQ(serial.exitCode, 3);
    EXPECT_TRUE(serial.err.contains("the serial port does not open: Device unavailable")) << serial.err.toStdString();
    EXPECT_TRUE(got().isEmpty());
}

TEST_F(Fetch, ATransferLibraryThatIsMissingCountsAsALinkThatDoesNotOpen) {
    ASSERT_TRUE(QFile::remove(path(u"libttdll.so"_s)));
    const Ran ran = fetchUsb();
    EXPECT_EQ(ran.exitCode, 3);
    EXPECT_TRUE(ran.err.contains("The meter open faild"));
}

TEST_F(Fetch, WrongUseIsToldAndEndsWith2) {
    EXPECT_EQ(fetch({}).exitCode, 2);
    EXPECT_EQ(fetch({u"--usb"_s, u"--serial"_s, u"1"_s}).exitCode, 2);
    EXPECT_EQ(fetch({u"--usb"_s, u"--count"_s, u"0"_s}).exitCode, 2);
    EXPECT_EQ(fetch({u"--usb"_s, u"--every"_s, u"x"_s}).exitCode, 2);
    EXPECT_EQ(fetch({u"--usb"_s, u"--count"_s, u"2"_s, u"-o"_s, path(u"one.bin"_s)}).exitCode, 2);
    EXPECT_EQ(fetch({u"--serial"_s, u"99"_s}).exitCode, 3);
    EXPECT_EQ(fetch({u"--help"_s}).exitCode, 0);
}

TEST_F(Fetch, AnInterruptEndsTheTransferAndLeavesNothing) {
    serveScript("silence@2\n");
    QProcess process;
    startSilentFetch(process);
    ::kill(static_cast<pid_t>(process.processId()), SIGINT);
    ASSERT_TRUE(process.waitForFinished(20000));
    EXPECT_EQ(process.exitCode(), 1);
    EXPECT_TRUE(process.readAllStandardError().contains("cancelled"));
    EXPECT_TRUE(got().isEmpty());
}

TEST_F(Fetch, TheFolderOfARunningFetchStaysAndThatOfAKilledOneGoesWithTheNext) {
    serveScript("silence@2\n");
    QProcess process;
    startSilentFetch(process);
    const QStringList working = got();
    ASSERT_EQ(working.size(), 1);
    EXPECT_EQ(fetchUsb().exitCode, 0);
    EXPECT_EQ(process.state(), QProcess::Running);
    EXPECT_TRUE(got().contains(working.first())) << "it is in use";
    EXPECT_EQ(got().size(), 2);
    process.kill();
    ASSERT_TRUE(process.waitForFinished(10000));
    EXPECT_TRUE(got().contains(working.first())) << "nobody could take it away";
    EXPECT_EQ(fetchUsb().exitCode, 0);
    const QStringList files = got();
    EXPECT_EQ(files.size(), 2);
    EXPECT_EQ(files.filter(u".bin"_s), files);
}

TEST_F(Fetch, ASilentInstrumentIsNoInstrument) {
    serveScript("silence@0\n");
    const Ran ran = fetchSerial({u"--timeout"_s, u"0.05"_s});
    EXPECT_EQ(ran.exitCode, 3);
    EXPECT_TRUE(ran.err.contains("no instrument answers")) << ran.err.toStdString();
}

TEST_F(Fetch, OfSeveralCapturesTheFirstThatFailedGivesTheCode) {
    addSettings("ReadTimeout=200\n");
    serveScript("clean\nbitmap\nunplug@2\nclean\n");
    const Ran ran = fetchUsb({u"--count"_s, u"4"_s, u"--every"_s, u"0"_s});
    EXPECT_EQ(ran.exitCode, 4);
    EXPECT_TRUE(ran.err.contains("2 of 4 captures fetched")) << ran.err.toStdString();
    EXPECT_EQ(ran.out.count('\n'), 3) << "the bitmap is stored too";
}

TEST_F(Fetch, AFileThatIsThereIsOverwrittenOnlyWhenToldTo) {
    serve({});
    const QString file = path(u"mine.bin"_s);
    write(file, "mine");
    ASSERT_TRUE(QFile::setPermissions(file, QFileDevice::ReadOwner | QFileDevice::WriteOwner));
    const QStringList into{u"--usb"_s, u"-o"_s, file};
    const Ran refused = fetch(into);
    EXPECT_EQ(refused.exitCode, 5);
    EXPECT_TRUE(refused.err.contains("exists already; --force overwrites it")) << refused.err.toStdString();
    EXPECT_EQ(contentOf(file), "mine");
    const Ran forced = fetch(into + QStringList{u"--force"_s});
    EXPECT_EQ(forced.exitCode, 0) << forced.err.toStdString();
    EXPECT_EQ(contentOf(file), capture("noise", 1) + '\0') << "the refused fetch has not even asked the instrument";
    EXPECT_EQ(QFileInfo(file).permissions() & QFileDevice::Permissions(0x0077), QFileDevice::Permissions())
        << "and its rights stay";
}

TEST_F(Fetch, AFileThatComesUpDuringTheTransferStays) {
    serveScript("late@2\n");
    const QString file = path(u"got/mine.bin"_s);
    QProcess process;
    process.start(path(u"kqx"_s), {u"fetch"_s, u"--usb"_s, u"-o"_s, file});
    QElapsedTimer patience;
    patience.start();
    while (got().isEmpty() && patience.elapsed() < 60000) {
        QThread::msleep(5);
    }
    write(file, "mine");
    ASSERT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(process.exitCode(), 5) << process.readAllStandardError().toStdString();
    EXPECT_EQ(contentOf(file), "mine");
    EXPECT_EQ(got().size(), 1);
}

TEST_F(Fetch, ABitmapUnderAGivenNameGetsItsOwnEnding) {
    serve({u"--fault"_s, u"bitmap"_s});
    const Ran ran = fetch({u"--usb"_s, u"-o"_s, path(u"got/one.bin"_s)});
    EXPECT_EQ(ran.exitCode, 4);
    EXPECT_EQ(got(), QStringList{u"one.bmp"_s});
    EXPECT_EQ(fetch({u"--usb"_s, u"-o"_s, path(u"got/two.bmp"_s)}).exitCode, 4);
    EXPECT_TRUE(contentOf(path(u"got/two.bmp"_s)).startsWith("BM"));
}

TEST_F(Fetch, DevicesAndPipesAreRefusedAndLinksFollowed) {
    serve({});
    const QString pipe = path(u"pipe"_s);
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    const QString device = path(u"device"_s); // a link to a device, so that a failing test damages nothing
    ASSERT_TRUE(QFile::link(u"/dev/null"_s, device));
    for (const QString& target : {pipe, device}) {
        const Ran ran = fetch({u"--usb"_s, u"--force"_s, u"-o"_s, target});
        EXPECT_EQ(ran.exitCode, 5);
        EXPECT_TRUE(ran.err.contains("is not an ordinary file")) << ran.err.toStdString();
    }
    struct stat state {};
    ASSERT_EQ(stat(QFile::encodeName(pipe).constData(), &state), 0);
    EXPECT_TRUE(S_ISFIFO(state.st_mode));
    EXPECT_EQ(QFileInfo(device).symLinkTarget(), u"/dev/null"_s);

    const QString link = path(u"link"_s);
    ASSERT_TRUE(QFile::link(path(u"got/end.bin"_s), link)); // the target does not exist yet
    EXPECT_EQ(fetch({u"--usb"_s, u"-o"_s, link}).exitCode, 0);
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(contentOf(path(u"got/end.bin"_s)), capture("noise", 1) + '\0');
    EXPECT_EQ(fetch({u"--usb"_s, u"-o"_s, link}).exitCode, 5);
    EXPECT_EQ(fetch({u"--usb"_s, u"--force"_s, u"-o"_s, link}).exitCode, 0);
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(contentOf(path(u"got/end.bin"_s)), capture("noise", 2) + '\0');

    const QString ring = path(u"ring"_s);
    ASSERT_TRUE(QFile::link(ring, ring));
    EXPECT_EQ(fetch({u"--usb"_s, u"-o"_s, ring}).exitCode, 5);
    EXPECT_EQ(fetch({u"--usb"_s, u"-o"_s, path(u"no/such.bin"_s)}).exitCode, 5);
}

TEST_F(Fetch, TheOtherCommandsRefuseDevicesAndFollowLinksToo) {
    const QString file = path(u"capture.bin"_s);
    write(file, capture("sine", 1));
    ASSERT_TRUE(QFile::copy(QStringLiteral(SIXTRACE_BIN "/ChineseS.Lan"), path(u"ChineseS.Lan"_s)));
    ASSERT_TRUE(QFile::copy(QStringLiteral(SIXTRACE_BIN "/English.Lan"), path(u"English.Lan"_s)));
    for (const auto& [command, ending] : {std::pair("screen", ".png"), std::pair("page", ".pdf"),
                                          std::pair("table", ".txt"), std::pair("table", ".xlsx")}) {
        const QString name = QString::fromLatin1(command);
        const QString device = path(name + u"device"_s + QString::fromLatin1(ending));
        ASSERT_TRUE(QFile::link(u"/dev/null"_s, device));
        EXPECT_EQ(kqx({name, file, device}).exitCode, 1) << command << ending;
        EXPECT_EQ(QFileInfo(device).symLinkTarget(), u"/dev/null"_s);
        const QString pipe = path(name + u"pipe"_s + QString::fromLatin1(ending));
        ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        EXPECT_EQ(kqx({name, file, pipe}).exitCode, 1) << command << ending;
        EXPECT_FALSE(QFileInfo(pipe).isFile());
        const QString end = path(name + u"end"_s + QString::fromLatin1(ending));
        const QString link = path(name + u"link"_s + QString::fromLatin1(ending));
        write(end, "old");
        ASSERT_TRUE(QFile::link(end, link));
        EXPECT_EQ(kqx({name, file, link}).exitCode, 0) << command << ending;
        EXPECT_TRUE(QFileInfo(link).isSymLink());
        EXPECT_GT(QFileInfo(end).size(), 3);
    }
}

TEST_F(Fetch, AMinuteMayBringAnyNumberOfFilesAndNoneIsReplaced) {
    serve({});
    const QDateTime now = QDateTime::currentDateTime();
    for (int minute = 0; minute < 3; ++minute) { // the clock may have been set back meanwhile
        const QString stem = now.addSecs(60 * minute).toString(u"'D'yyMMddHHmm"_s);
        write(path(u"got/%1.bin"_s.arg(stem)), "mine");
        write(path(u"got/%1-2.bin"_s.arg(stem)), "mine too");
    }
    const Ran ran = fetchUsb({u"--count"_s, u"3"_s, u"--every"_s, u"0"_s});
    EXPECT_EQ(ran.exitCode, 0) << ran.err.toStdString();
    EXPECT_EQ(got().size(), 9);
    int kept = 0;
    for (const QString& file : got()) {
        kept += contentOf(path(u"got/"_s) + file).startsWith("mine") ? 1 : 0;
    }
    EXPECT_EQ(kept, 6);
    EXPECT_TRUE(ran.out.contains("-3.bin"));
}

TEST_F(Fetch, EightAtOnceIntoOneFolderLoseNoCapture) {
    addSettings("ReadTimeout=60000\n");
    serve({});
    std::set<QByteArray> wanted;
    std::set<QByteArray> found;
    constexpr std::uint32_t kAtOnce = 8;
    std::vector<std::unique_ptr<QProcess>> processes;
    for (std::uint32_t i = 0; i < kAtOnce; ++i) {
        wanted.insert(capture("noise", i + 1) + '\0');
        processes.push_back(std::make_unique<QProcess>());
        processes.back()->start(path(u"kqx"_s), {u"fetch"_s, u"--usb"_s, u"-o"_s, path(u"got"_s)});
    }
    std::set<QByteArray> names;
    for (const auto& process : processes) {
        ASSERT_TRUE(process->waitForFinished(120000));
        EXPECT_EQ(process->exitCode(), 0) << process->readAllStandardError().toStdString();
        names.insert(process->readAllStandardOutput());
    }
    for (const QString& file : got()) {
        found.insert(contentOf(path(u"got/"_s) + file));
    }
    EXPECT_EQ(names.size(), kAtOnce);
    EXPECT_EQ(found, wanted);
}

} // namespace
} // namespace sixtrace::test
