// SPDX-License-Identifier: MIT
// kqx fetch against the simulated instrument, program against program.
#include "fetchfixture.h"

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
    const Ran ran =
        fetchUsb({QStringLiteral("--count"), QStringLiteral("4"), QStringLiteral("--every"), QStringLiteral("0")});
    EXPECT_EQ(ran.exitCode, 0);
    EXPECT_EQ(ran.out.count('\n'), 4);
    const QStringList files = got();
    EXPECT_EQ(files.size(), 4);
    for (const QString& file : files) {
        EXPECT_TRUE(file.startsWith(u'D') && file.endsWith(QStringLiteral(".bin"))) << file.toStdString();
    }
    // Four files fall into two minutes at most, so that one of these has a second.
    EXPECT_FALSE(files.filter(QStringLiteral("-2.bin")).isEmpty()) << files.join(u' ').toStdString();
}

TEST_F(Fetch, DamagedBlocksAreAskedForAgainAndTheFileIsRight) {
    serveScript("crc@1x2 complement@3 lost-byte@5 repeat@0 noise@2\n");
    const Ran ran = fetchSerial({QStringLiteral("--timeout"), QStringLiteral("0.3")});
    EXPECT_EQ(ran.exitCode, 0) << ran.err.toStdString();
    EXPECT_EQ(fetched(ran), capture("noise", 1));
}

TEST_F(Fetch, WhatGoesWrongOverTheSerialLineLeavesNoFileAndTheNextFetchIsClean) {
    serveScript("silence@2\nstop@3\ncrc@1x9\nearly-end@3\nwrong-length\n");
    for (int fault = 0; fault < 5; ++fault) {
        const Ran ran = fetchSerial({QStringLiteral("--timeout"), QStringLiteral("0.2")});
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
    EXPECT_EQ(fetchSerial({QStringLiteral("--timeout"), QStringLiteral("0.1")}).exitCode, 1);
    EXPECT_TRUE(got().isEmpty());
    QElapsedTimer patience;
    patience.start();
    while (!QFileInfo::exists(path(QStringLiteral("line"))) && patience.elapsed() < 10000) {
        QThread::msleep(50);
    }
    EXPECT_EQ(fetchSerial().exitCode, 0);
}

TEST_F(Fetch, WhatGoesWrongOverUsbLeavesNoFileAndTheNextFetchIsClean) {
    addSettings("ReadTimeout=200\n");
    serveScript("silence@0\nstop@4\nunplug@2\nlost-block@1\nclean\n");
    for (int fault = 0; fault < 4; ++fault) {
        const Ran ran = fetchUsb();
        // Where not even a header comes there is no instrument. A lost block is missed at the end.
        EXPECT_EQ(ran.exitCode, fault == 0 ? 3 : 1) << fault << ran.err.toStdString();
    }
    EXPECT_TRUE(got().isEmpty());
    EXPECT_TRUE(contentOf(path(QStringLiteral("ttdll.log"))).contains("the instrument is silent"));
    const Ran ran = fetchUsb();
    EXPECT_EQ(ran.exitCode, 0);
    EXPECT_EQ(fetched(ran), capture("noise", 5) + '\0');
}

TEST_F(Fetch, ABitmapIsStoredUnderItsOwnExtension) {
    serve({QStringLiteral("--fault"), QStringLiteral("bitmap")});
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
    EXPECT_TRUE(contentOf(path(QStringLiteral("ttdll.log"))).contains("usb:"));
    const Ran serial = fetchSerial();
    EXPECT_EQ(serial.exitCode, 3);
    EXPECT_TRUE(serial.err.contains("the serial port does not open: Device unavailable")) << serial.err.toStdString();
    EXPECT_TRUE(got().isEmpty());
}

TEST_F(Fetch, ATransferLibraryThatIsMissingCountsAsALinkThatDoesNotOpen) {
    ASSERT_TRUE(QFile::remove(path(QStringLiteral("libttdll.so"))));
    const Ran ran = fetchUsb();
    EXPECT_EQ(ran.exitCode, 3);
    EXPECT_TRUE(ran.err.contains("The meter open faild"));
}

TEST_F(Fetch, WrongUseIsToldAndEndsWith2) {
    EXPECT_EQ(fetch({}).exitCode, 2);
    EXPECT_EQ(fetch({QStringLiteral("--usb"), QStringLiteral("--serial"), QStringLiteral("1")}).exitCode, 2);
    EXPECT_EQ(fetch({QStringLiteral("--usb"), QStringLiteral("--count"), QStringLiteral("0")}).exitCode, 2);
    EXPECT_EQ(fetch({QStringLiteral("--usb"), QStringLiteral("--every"), QStringLiteral("x")}).exitCode, 2);
    EXPECT_EQ(fetch({QStringLiteral("--usb"), QStringLiteral("--count"), QStringLiteral("2"), QStringLiteral("-o"),
                     path(QStringLiteral("one.bin"))})
                  .exitCode,
              2);
    EXPECT_EQ(fetch({QStringLiteral("--serial"), QStringLiteral("99")}).exitCode, 3);
    EXPECT_EQ(fetch({QStringLiteral("--help")}).exitCode, 0);
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
    EXPECT_EQ(files.filter(QStringLiteral(".bin")), files);
}

TEST_F(Fetch, TheInstrumentEndsOnASignalAndTakesItsNamesAway) {
    serve({});
    EXPECT_TRUE(QFileInfo::exists(path(QStringLiteral("line"))));
    EXPECT_TRUE(QFileInfo::exists(path(QStringLiteral("instrument.socket"))));
    stop();
    EXPECT_EQ(instrument.exitCode(), 0);
    EXPECT_FALSE(QFileInfo(path(QStringLiteral("line"))).isSymLink());
    EXPECT_FALSE(QFileInfo::exists(path(QStringLiteral("instrument.socket"))));
}

TEST_F(Fetch, TheInstrumentEndsByItselfWhenItsClientIsGone) {
    serve({QStringLiteral("--idle"), QStringLiteral("1")});
    EXPECT_EQ(fetchUsb().exitCode, 0);
    EXPECT_TRUE(instrument.waitForFinished(20000));
    EXPECT_EQ(instrument.exitCode(), 0);
}

TEST_F(Fetch, TheInstrumentReplacesALinkAndASocketButNothingElse) {
    QFile precious(path(QStringLiteral("line")));
    ASSERT_TRUE(precious.open(QIODevice::WriteOnly));
    precious.write("mine");
    precious.close();
    const Ran ran = test::run(QStringLiteral("sixtrace-instrument"), {QStringLiteral("--serial"), precious.fileName()});
    EXPECT_EQ(ran.exitCode, 1);
    EXPECT_EQ(contentOf(precious.fileName()), "mine");
}

TEST_F(Fetch, ASilentInstrumentIsNoInstrument) {
    serveScript("silence@0\n");
    const Ran ran = fetchSerial({QStringLiteral("--timeout"), QStringLiteral("0.05")});
    EXPECT_EQ(ran.exitCode, 3);
    EXPECT_TRUE(ran.err.contains("no instrument answers")) << ran.err.toStdString();
}

TEST_F(Fetch, OfSeveralCapturesTheFirstThatFailedGivesTheCode) {
    addSettings("ReadTimeout=200\n");
    serveScript("clean\nbitmap\nunplug@2\nclean\n");
    const Ran ran =
        fetchUsb({QStringLiteral("--count"), QStringLiteral("4"), QStringLiteral("--every"), QStringLiteral("0")});
    EXPECT_EQ(ran.exitCode, 4);
    EXPECT_TRUE(ran.err.contains("2 of 4 captures fetched")) << ran.err.toStdString();
    EXPECT_EQ(ran.out.count('\n'), 3) << "the bitmap is stored too";
}

TEST_F(Fetch, AFileThatIsThereIsOverwrittenOnlyWhenToldTo) {
    serve({});
    const QString file = path(QStringLiteral("mine.bin"));
    write(file, "mine");
    ASSERT_TRUE(QFile::setPermissions(file, QFileDevice::ReadOwner | QFileDevice::WriteOwner));
    const QStringList into{QStringLiteral("--usb"), QStringLiteral("-o"), file};
    const Ran refused = fetch(into);
    EXPECT_EQ(refused.exitCode, 5);
    EXPECT_TRUE(refused.err.contains("exists already; --force overwrites it")) << refused.err.toStdString();
    EXPECT_EQ(contentOf(file), "mine");
    const Ran forced = fetch(into + QStringList{QStringLiteral("--force")});
    EXPECT_EQ(forced.exitCode, 0) << forced.err.toStdString();
    EXPECT_EQ(contentOf(file), capture("noise", 1) + '\0') << "the refused fetch has not even asked the instrument";
    EXPECT_EQ(QFileInfo(file).permissions() & QFileDevice::Permissions(0x0077), QFileDevice::Permissions())
        << "and its rights stay";
}

TEST_F(Fetch, AFileThatComesUpDuringTheTransferStays) {
    serveScript("late@2\n");
    const QString file = path(QStringLiteral("got/mine.bin"));
    QProcess process;
    process.start(path(QStringLiteral("kqx")),
                  {QStringLiteral("fetch"), QStringLiteral("--usb"), QStringLiteral("-o"), file});
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
    serve({QStringLiteral("--fault"), QStringLiteral("bitmap")});
    const Ran ran = fetch({QStringLiteral("--usb"), QStringLiteral("-o"), path(QStringLiteral("got/one.bin"))});
    EXPECT_EQ(ran.exitCode, 4);
    EXPECT_EQ(got(), QStringList{QStringLiteral("one.bmp")});
    EXPECT_EQ(fetch({QStringLiteral("--usb"), QStringLiteral("-o"), path(QStringLiteral("got/two.bmp"))}).exitCode, 4);
    EXPECT_TRUE(contentOf(path(QStringLiteral("got/two.bmp"))).startsWith("BM"));
}

TEST_F(Fetch, DevicesAndPipesAreRefusedAndLinksFollowed) {
    serve({});
    const QString pipe = path(QStringLiteral("pipe"));
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    const QString device = path(QStringLiteral("device")); // a link to one, so that a failure harms nobody
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/null"), device));
    for (const QString& target : {pipe, device}) {
        const Ran ran = fetch({QStringLiteral("--usb"), QStringLiteral("--force"), QStringLiteral("-o"), target});
        EXPECT_EQ(ran.exitCode, 5);
        EXPECT_TRUE(ran.err.contains("is not an ordinary file")) << ran.err.toStdString();
    }
    struct stat state {};
    ASSERT_EQ(stat(QFile::encodeName(pipe).constData(), &state), 0);
    EXPECT_TRUE(S_ISFIFO(state.st_mode));
    EXPECT_EQ(QFileInfo(device).symLinkTarget(), QStringLiteral("/dev/null"));

    const QString link = path(QStringLiteral("link"));
    ASSERT_TRUE(QFile::link(path(QStringLiteral("got/end.bin")), link)); // leads to what is not there yet
    EXPECT_EQ(fetch({QStringLiteral("--usb"), QStringLiteral("-o"), link}).exitCode, 0);
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(contentOf(path(QStringLiteral("got/end.bin"))), capture("noise", 1) + '\0');
    EXPECT_EQ(fetch({QStringLiteral("--usb"), QStringLiteral("-o"), link}).exitCode, 5);
    EXPECT_EQ(fetch({QStringLiteral("--usb"), QStringLiteral("--force"), QStringLiteral("-o"), link}).exitCode, 0);
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(contentOf(path(QStringLiteral("got/end.bin"))), capture("noise", 2) + '\0');

    const QString ring = path(QStringLiteral("ring"));
    ASSERT_TRUE(QFile::link(ring, ring));
    EXPECT_EQ(fetch({QStringLiteral("--usb"), QStringLiteral("-o"), ring}).exitCode, 5);
    EXPECT_EQ(fetch({QStringLiteral("--usb"), QStringLiteral("-o"), path(QStringLiteral("no/such.bin"))}).exitCode, 5);
}

TEST_F(Fetch, TheOtherCommandsRefuseDevicesAndFollowLinksToo) {
    const QString file = path(QStringLiteral("capture.bin"));
    write(file, capture("sine", 1));
    ASSERT_TRUE(QFile::copy(QStringLiteral(SIXTRACE_BIN "/ChineseS.Lan"), path(QStringLiteral("ChineseS.Lan"))));
    ASSERT_TRUE(QFile::copy(QStringLiteral(SIXTRACE_BIN "/English.Lan"), path(QStringLiteral("English.Lan"))));
    for (const auto& [command, ending] : {std::pair("screen", ".png"), std::pair("page", ".pdf"),
                                          std::pair("table", ".txt"), std::pair("table", ".xlsx")}) {
        const QString name = QString::fromLatin1(command);
        const QString device = path(name + QStringLiteral("device") + QString::fromLatin1(ending));
        ASSERT_TRUE(QFile::link(QStringLiteral("/dev/null"), device));
        EXPECT_EQ(kqx({name, file, device}).exitCode, 1) << command << ending;
        EXPECT_EQ(QFileInfo(device).symLinkTarget(), QStringLiteral("/dev/null"));
        const QString pipe = path(name + QStringLiteral("pipe") + QString::fromLatin1(ending));
        ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        EXPECT_EQ(kqx({name, file, pipe}).exitCode, 1) << command << ending;
        EXPECT_FALSE(QFileInfo(pipe).isFile());
        const QString end = path(name + QStringLiteral("end") + QString::fromLatin1(ending));
        const QString link = path(name + QStringLiteral("link") + QString::fromLatin1(ending));
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
    for (int minute = 0; minute < 3; ++minute) { // as if the clock had been set back
        const QString stem = now.addSecs(60 * minute).toString(QStringLiteral("'D'yyMMddHHmm"));
        write(path(QStringLiteral("got/%1.bin").arg(stem)), "mine");
        write(path(QStringLiteral("got/%1-2.bin").arg(stem)), "mine too");
    }
    const Ran ran =
        fetchUsb({QStringLiteral("--count"), QStringLiteral("3"), QStringLiteral("--every"), QStringLiteral("0")});
    EXPECT_EQ(ran.exitCode, 0) << ran.err.toStdString();
    EXPECT_EQ(got().size(), 9);
    int kept = 0;
    for (const QString& file : got()) {
        kept += contentOf(path(QStringLiteral("got/")) + file).startsWith("mine") ? 1 : 0;
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
        processes.back()->start(path(QStringLiteral("kqx")), {QStringLiteral("fetch"), QStringLiteral("--usb"),
                                                              QStringLiteral("-o"), path(QStringLiteral("got"))});
    }
    std::set<QByteArray> names;
    for (const auto& process : processes) {
        ASSERT_TRUE(process->waitForFinished(120000));
        EXPECT_EQ(process->exitCode(), 0) << process->readAllStandardError().toStdString();
        names.insert(process->readAllStandardOutput());
    }
    for (const QString& file : got()) {
        found.insert(contentOf(path(QStringLiteral("got/")) + file));
    }
    EXPECT_EQ(names.size(), kAtOnce);
    EXPECT_EQ(found, wanted);
}

TEST_F(Fetch, ASecondInstrumentIsRefusedAndTheFirstServesOn) {
    serve({});
    for (const auto& [option, name] : {std::pair("--usb", "instrument.socket"), std::pair("--serial", "line")}) {
        const Ran ran =
            run(QStringLiteral("sixtrace-instrument"), {QString::fromLatin1(option), path(QString::fromLatin1(name))});
        EXPECT_EQ(ran.exitCode, 1);
        EXPECT_TRUE(ran.err.contains("another instrument serves there")) << ran.err.toStdString();
    }
    EXPECT_EQ(fetchUsb().exitCode, 0);
    EXPECT_EQ(fetchSerial().exitCode, 0);
}

TEST_F(Fetch, AnInstrumentTakesOnlyItsOwnSocketAway) {
    serve({});
    const QString socketFile = path(QStringLiteral("instrument.socket"));
    ASSERT_TRUE(QFile::remove(socketFile));
    QProcess second;
    second.start(QStringLiteral(SIXTRACE_BIN "/sixtrace-instrument"),
                 {QStringLiteral("--usb"), socketFile, QStringLiteral("--scene"), QStringLiteral("noise"),
                  QStringLiteral("--idle"), QStringLiteral("120")});
    ASSERT_TRUE(second.waitForReadyRead(60000)) << second.readAllStandardError().toStdString();
    stop();
    EXPECT_EQ(fetchUsb().exitCode, 0) << "the second one's socket is still there";
    ::kill(static_cast<pid_t>(second.processId()), SIGTERM);
    ASSERT_TRUE(second.waitForFinished(60000));
    EXPECT_FALSE(QFileInfo::exists(socketFile));
}

TEST_F(Fetch, WhatAKilledInstrumentHasLeftIsReplaced) {
    serve({});
    instrument.kill();
    ASSERT_TRUE(instrument.waitForFinished(60000));
    EXPECT_TRUE(QFileInfo(path(QStringLiteral("line"))).isSymLink());
    serve({});
    EXPECT_EQ(fetchUsb().exitCode, 0);
    EXPECT_EQ(fetchSerial().exitCode, 0);
}

TEST_F(Fetch, AnInstrumentReplacesNoLinkToARealDevice) {
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/null"), path(QStringLiteral("line"))));
    const Ran ran =
        run(QStringLiteral("sixtrace-instrument"), {QStringLiteral("--serial"), path(QStringLiteral("line"))});
    EXPECT_EQ(ran.exitCode, 1);
    EXPECT_TRUE(ran.err.contains("leads to /dev/null")) << ran.err.toStdString();
    EXPECT_EQ(QFileInfo(path(QStringLiteral("line"))).symLinkTarget(), QStringLiteral("/dev/null"));
}

} // namespace
} // namespace sixtrace::test
