// SPDX-License-Identifier: MIT
// kqx fetch against the simulated instrument, program against program.
#include "program.h"

#include "capture/scenes.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

#include <csignal>

using namespace sixtrace;
using test::Ran;

namespace {

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

QByteArray capture(const char* scene, std::uint32_t seed) {
    return captureBytes(*captureForm("V11"), *sceneBlocks(QString::fromLatin1(scene), seed));
}

/// A folder with a companion of its own beside its transfer library, and an instrument that serves both links there.
class Fetch : public ::testing::Test {
protected:
    Fetch() {
        for (const char* name : {"kqx", "kqx-desktop", "libttdll.so", "ttdll.ini"}) {
            const QString file = QString::fromLatin1(name);
            EXPECT_TRUE(QFile::copy(QStringLiteral(SIXTRACE_BIN "/") + file, path(file)));
        }
        QDir(folder.path()).mkdir(QStringLiteral("got"));
    }
    ~Fetch() override { stop(); }

    [[nodiscard]] QString path(const QString& name) const { return folder.filePath(name); }
    [[nodiscard]] QStringList got() const {
        return QDir(path(QStringLiteral("got"))).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    void serve(const QStringList& more) {
        instrument.start(QStringLiteral(SIXTRACE_BIN "/sixtrace-instrument"),
                         QStringList{QStringLiteral("--serial"), path(QStringLiteral("line")), QStringLiteral("--usb"),
                                     path(QStringLiteral("instrument.socket")), QStringLiteral("--rate"),
                                     QStringLiteral("0"), QStringLiteral("--scene"), QStringLiteral("noise"),
                                     QStringLiteral("--idle"), QStringLiteral("120")} +
                             more);
        ASSERT_TRUE(instrument.waitForStarted());
        QByteArray said;
        while (!said.contains("USB link at") && instrument.waitForReadyRead(10000)) {
            said += instrument.readAllStandardOutput();
        }
        ASSERT_TRUE(said.contains("USB link at")) << instrument.readAllStandardError().toStdString();
    }
    void serveScript(const QByteArray& script) {
        QFile file(path(QStringLiteral("script")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(script);
        file.close();
        serve({QStringLiteral("--script"), file.fileName()});
    }
    void stop() {
        if (instrument.state() != QProcess::NotRunning) {
            ::kill(static_cast<pid_t>(instrument.processId()), SIGTERM);
            EXPECT_TRUE(instrument.waitForFinished(10000));
        }
    }

    Ran fetch(const QStringList& arguments) {
        QProcess process;
        process.start(path(QStringLiteral("kqx")), QStringList{QStringLiteral("fetch")} + arguments);
        if (!process.waitForFinished(60000)) {
            process.kill();
            process.waitForFinished();
            return {};
        }
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1, process.readAllStandardOutput(),
                process.readAllStandardError()};
    }
    Ran fetchSerial(const QStringList& more = {}) {
        return fetch(QStringList{QStringLiteral("--serial"), path(QStringLiteral("line")), QStringLiteral("-o"),
                                 path(QStringLiteral("got"))} +
                     more);
    }
    Ran fetchUsb(const QStringList& more = {}) {
        return fetch(QStringList{QStringLiteral("--usb"), QStringLiteral("-o"), path(QStringLiteral("got"))} + more);
    }
    /// A fetch over the serial line that has begun its work, and waits long for an instrument that has gone silent.
    void startSilentFetch(QProcess& process) const {
        process.start(path(QStringLiteral("kqx")),
                      {QStringLiteral("fetch"), QStringLiteral("--serial"), path(QStringLiteral("line")),
                       QStringLiteral("-o"), path(QStringLiteral("got")), QStringLiteral("--timeout"),
                       QStringLiteral("1")});
        ASSERT_TRUE(process.waitForStarted());
        QElapsedTimer patience;
        patience.start();
        const auto hasBegun = [this] {
            const QStringList names = got();
            return !names.isEmpty() && QDir(path(QStringLiteral("got/")) + names.first()).count() > 2;
        };
        while (!hasBegun() && patience.elapsed() < 10000) {
            QThread::msleep(20);
        }
        ASSERT_TRUE(hasBegun());
    }
    /// The content of the file that a fetch has named.
    [[nodiscard]] static QByteArray fetched(const Ran& ran) { return contentOf(QString::fromUtf8(ran.out).trimmed()); }

    QTemporaryDir folder;
    QProcess instrument;
};

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
        EXPECT_TRUE(ran.err.contains("the transfer failed")) << ran.err.toStdString();
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
    QFile settings(path(QStringLiteral("ttdll.ini")));
    ASSERT_TRUE(settings.open(QIODevice::Append));
    settings.write("ReadTimeout=200\n");
    settings.close();
    serveScript("silence@0\nstop@4\nunplug@2\nlost-block@1\nclean\n");
    for (int fault = 0; fault < 4; ++fault) {
        const Ran ran = fetchUsb();
        // A lost block is missed at the end, where the last whole block comes short.
        EXPECT_EQ(ran.exitCode, 1) << fault << ran.out.toStdString();
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
        EXPECT_EQ(ran.exitCode, 0) << ran.err.toStdString();
        EXPECT_TRUE(ran.out.endsWith(".bmp\n"));
        EXPECT_TRUE(fetched(ran).startsWith("BM"));
    }
}

TEST_F(Fetch, WithoutAnInstrumentFailsAndTheLogSaysWhy) {
    const Ran usb = fetchUsb();
    EXPECT_EQ(usb.exitCode, 1);
    EXPECT_TRUE(usb.err.contains("The meter open faild"));
    EXPECT_TRUE(contentOf(path(QStringLiteral("ttdll.log"))).contains("usb:"));
    const Ran serial = fetchSerial();
    EXPECT_EQ(serial.exitCode, 1);
    EXPECT_TRUE(serial.err.contains("the serial port does not open: Device unavailable")) << serial.err.toStdString();
    EXPECT_TRUE(got().isEmpty());
}

TEST_F(Fetch, ATransferLibraryThatIsMissingCountsAsALinkThatDoesNotOpen) {
    ASSERT_TRUE(QFile::remove(path(QStringLiteral("libttdll.so"))));
    const Ran ran = fetchUsb();
    EXPECT_EQ(ran.exitCode, 1);
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
    EXPECT_EQ(fetch({QStringLiteral("--serial"), QStringLiteral("99")}).exitCode, 1);
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

} // namespace
